#include "HelpWindow.h"

#include "HelpFindBar.h"
#include "PlaceBeside.h"
#include "PlainTexts.h"
#include "VisibleText.h"
#include "WidgetPlacement.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

const QString kFirstPage = QStringLiteral("index.html");
constexpr QSize kDesignedSize(1020, 760); // the pictures of the manual fit in
constexpr int kLeastWidth = 520;          // a page can be read, pictures are cut

} // namespace

HelpWindow::HelpWindow(HelpBrowser::Translate translate, QWidget* parent)
    : QMainWindow(parent),
      m_translate([translate = std::move(translate)](const QString& text) { return visibleText(translate(text)); }),
      m_browser(new HelpBrowser(m_translate, this)), m_findBar(new HelpFindBar(*m_browser, this)),
      m_toolBar(new QToolBar(this))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setAttribute(Qt::WA_QuitOnClose, false);
    m_browser->setObjectName(QStringLiteral("browser"));
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addToolBar(m_toolBar);
    auto* middle = new QWidget(this);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_browser, 1);
    layout->addWidget(m_findBar);
    m_findBar->hide();
    setCentralWidget(middle);
    showTextsPlain(*this);
    setupActions();
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(visibleText(m_browser->documentTitle()));
        statusBar()->clearMessage();
    });
    connect(m_browser, &HelpBrowser::linkRefused, this, [this](const QString& address) {
        statusBar()->showMessage(m_translate(QStringLiteral("%1 is not part of the manual")).arg(visibleText(address)));
    });
    resize(kDesignedSize.boundedTo(roomFor(*this)));
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::setupActions()
{
    QAction* back = addAction("back", "Back", {QKeySequence(Qt::ALT | Qt::Key_Left), QKeySequence(Qt::Key_Back)});
    back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    QAction* forward =
        addAction("forward", "Forward", {QKeySequence(Qt::ALT | Qt::Key_Right), QKeySequence(Qt::Key_Forward)});
    forward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    QAction* contents = addAction("contents", "Contents", {QKeySequence(Qt::ALT | Qt::Key_Home)});
    QAction* find = addAction("find", "Find", {QKeySequence(QKeySequence::Find)});
    QAction* paper = addAction("print", "Print...", {QKeySequence(QKeySequence::Print)});
    QAction* larger = addAction("larger", "Larger", {QKeySequence(QKeySequence::ZoomIn), Qt::CTRL | Qt::Key_Equal});
    QAction* smaller = addAction("smaller", "Smaller", {QKeySequence(QKeySequence::ZoomOut)});
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(back, &QAction::triggered, m_browser, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_browser, &QTextBrowser::forward);
    connect(contents, &QAction::triggered, m_browser,
            [this] { m_browser->showPage(m_browser->folder(), kFirstPage, {}); });
    connect(find, &QAction::triggered, m_findBar, &HelpFindBar::open);
    connect(paper, &QAction::triggered, this, &HelpWindow::print);
    connect(larger, &QAction::triggered, m_browser, [this] { m_browser->zoomIn(); });
    connect(smaller, &QAction::triggered, m_browser, [this] { m_browser->zoomOut(); });
}

// The caption is the key of the language files.
QAction* HelpWindow::addAction(const char* objectName, const char* caption, const QList<QKeySequence>& keys)
{
    QAction* action = m_toolBar->addAction(QString());
    action->setObjectName(QLatin1String(objectName));
    action->setData(QLatin1String(caption));
    action->setShortcuts(keys);
    return action;
}

void HelpWindow::translateTexts()
{
    const auto actions = m_toolBar->actions();
    for (QAction* action : actions) {
        action->setText(m_translate(action->data().toString()));
        action->setToolTip(action->text() +
                           QStringLiteral(" (%1)").arg(action->shortcut().toString(QKeySequence::NativeText)));
    }
    m_findBar->translate(m_translate);
    m_browser->setAccessibleName(m_translate(QStringLiteral("Help")));
}

void HelpWindow::showPage(const QString& folder, const QString& page, const QString& anchor)
{
    translateTexts();
    m_browser->showPage(folder, page, anchor);
    setWindowTitle(visibleText(m_browser->documentTitle()));
    if (isMinimized())
        showNormal();
    const QWidget* explained = QApplication::activeWindow();
    if (!isVisible() && explained != nullptr && explained != this)
        comeBeside(*explained);
    show();
    stayUsable();
    raise();
    activateWindow();
    m_browser->setFocus();
}

// As wide as there is room at its side, so that both can be seen.
void HelpWindow::comeBeside(const QWidget& explained)
{
    const QRect room = explained.screen()->availableGeometry();
    const QRect other = explained.frameGeometry();
    const int aside = std::max(other.left() - room.left(), room.right() - other.right());
    const QSize frame = explained.screen()->availableSize() - roomFor(explained);
    QSize size = kDesignedSize.boundedTo(roomFor(explained));
    if (aside - frame.width() >= kLeastWidth)
        size.setWidth(std::min(size.width(), aside - frame.width()));
    resize(size);
    move(placeBeside(other, size + frame, room));
}

// Windows that belong to a modal dialog are not blocked by it.
void HelpWindow::stayUsable()
{
    const QWidget* modal = QApplication::activeModalWidget();
    QWindow* dialog = modal == nullptr ? nullptr : modal->window()->windowHandle();
    QWindow* own = windowHandle();
    if (own == nullptr || own->transientParent() == dialog || dialog == own)
        return;
    // A dialog over this window, such as that for printing, already belongs to it: belonging to each other has no end.
    if (dialog != nullptr && own->isAncestorOf(dialog, QWindow::IncludeTransients))
        return;
    if (m_dialog)
        m_dialog->disconnect(this);
    m_dialog = dialog;
    own->setTransientParent(dialog);
    if (dialog != nullptr)
        connect(dialog, &QWindow::visibleChanged, this, &HelpWindow::stayUsable, Qt::QueuedConnection);
}

bool HelpWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked)
        QMetaObject::invokeMethod(this, &HelpWindow::stayUsable, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

void HelpWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_findBar->isVisible()) {
        m_findBar->hide();
        m_browser->setFocus();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_F3) {
        event->modifiers().testFlag(Qt::ShiftModifier) ? m_findBar->findPrevious() : m_findBar->findNext();
    } else if (event->key() == Qt::Key_0 && event->modifiers().testFlag(Qt::ControlModifier)) {
        m_browser->resetZoom();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

void HelpWindow::print()
{
    QPrinter printer;
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        m_browser->print(&printer);
}

void HelpWindow::closeAll()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* help = qobject_cast<HelpWindow*>(window))
            help->close();
    }
}

} // namespace platform
