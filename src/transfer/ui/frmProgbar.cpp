#include "frmProgbar.h"

#include "AccessibleNames.h"
#include "EventWait.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int kMinimumWidth = 420;

} // namespace

frmProgbar::frmProgbar(QWidget* parent)
    : QDialog(parent), m_label(new QLabel(this)), m_bar(new QProgressBar(this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setupControls();
    connect(m_cancel, &QPushButton::clicked, this, &frmProgbar::askCancel);
}

void frmProgbar::setupControls()
{
    setObjectName(QStringLiteral("frmProgbar"));
    setWindowTitle(QStringLiteral("Sending..."));
    m_label->setObjectName(QStringLiteral("Label1"));
    m_label->setText(QStringLiteral("It is forwarding it. Please wait for a while."));
    m_label->setWordWrap(true);
    m_bar->setObjectName(QStringLiteral("ProgressBar1"));
    platform::nameWidget(*m_bar, QStringLiteral("Progress"));
    m_cancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cancel->setAutoDefault(false); // an Enter that was meant for a cell cancels nothing
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_bar);
    layout->addWidget(m_cancel, 0, Qt::AlignRight);
    setMinimumWidth(kMinimumWidth);
    m_controls = std::make_unique<platform::ControlRegistry>(*this, objectName());
    for (QWidget* control :
         {static_cast<QWidget*>(m_label), static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_cancel)})
        m_controls->add(control, control->objectName());
}

frmProgbar::~frmProgbar()
{
    releaseOwner();
}

void frmProgbar::releaseOwner()
{
    if (m_owner)
        m_owner->setEnabled(true);
}

void frmProgbar::showModeless(QWidget* Owner, int lMax, const QString& sTitle, const QString& sLabel, int Index,
                              bool bDisable, bool bCButton)
{
    if (m_owner != Owner)
        releaseOwner();
    m_owner = Owner;
    m_index = Index;
    m_cancel->setVisible(bCButton);
    m_cancel->setEnabled(true);
    m_cancel->setText(QStringLiteral("Cancel"));
    if (Owner != nullptr)
        Owner->setEnabled(!bDisable);
    translate(sTitle, sLabel);
    m_bar->setRange(0, std::max(lMax, 1));
    m_bar->setValue(0);
    adjustSize();
    placeOver(Owner);
    belongTo(Owner);
    show();
}

void frmProgbar::translate(const QString& title, const QString& label)
{
    if (m_library != nullptr) {
        m_library->tranForm(*m_controls);
        platform::translateNames(*this, m_library->translation());
    }
    setWindowTitle(platform::visibleText(m_library != nullptr ? m_library->tranStr(title) : title));
    m_label->setText(platform::visibleLines(m_library != nullptr ? m_library->tranStr(label) : label));
}

void frmProgbar::placeOver(const QWidget* owner)
{
    const QRect frame = owner != nullptr && owner->isVisible() ? owner->window()->frameGeometry()
                                                               : QGuiApplication::primaryScreen()->availableGeometry();
    move(frame.left() + (frame.width() - width()) / 2, frame.top() + (frame.height() - height()) / 2);
}

// The window system keeps the dialog over its owner. It is no child of it: disabling the owner would disable it too.
void frmProgbar::belongTo(const QWidget* owner)
{
    winId(); // makes the window
    windowHandle()->setTransientParent(owner != nullptr ? owner->window()->windowHandle() : nullptr);
}

void frmProgbar::setPos(int lPos)
{
    m_bar->setMaximum(std::max(m_bar->maximum(), lPos));
    m_bar->setValue(lPos);
    repaint();
    if (m_owner && !m_owner->isEnabled())
        platform::dispatchPendingEvents();
    else
        platform::dispatchWithoutInput();
}

void frmProgbar::setText(const QString& text)
{
    m_label->setText(platform::visibleLines(text));
    const int needed = layout()->totalHeightForWidth(width());
    if (needed > height())
        resize(width(), needed);
}

void frmProgbar::unloadForm()
{
    m_ending = true;
    close();
    m_ending = false;
}

// Escape asks like the Cancel button; without one the dialog cannot be left by hand.
void frmProgbar::reject()
{
    if (!m_cancel->isHidden())
        askCancel();
}

void frmProgbar::askCancel()
{
    const QString text = QStringLiteral("Stopping...");
    m_cancel->setEnabled(false);
    m_cancel->setText(platform::visibleText(m_library != nullptr ? m_library->tranStr(text) : text));
    Q_EMIT ProgCancel(m_index);
}

void frmProgbar::closeEvent(QCloseEvent* event)
{
    if (!m_ending) {
        event->ignore();
        reject();
        return;
    }
    releaseOwner();
    event->accept();
}

// Hidden by whatever way; a minimised dialog is still at work.
void frmProgbar::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous())
        releaseOwner();
    QDialog::hideEvent(event);
}
