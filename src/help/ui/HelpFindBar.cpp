#include "HelpFindBar.h"

#include "HelpBrowser.h"
#include "VisibleText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>

namespace platform {

namespace {

constexpr int kShownHits = 7; // without scrolling

}

HelpFindBar::HelpFindBar(HelpBrowser& browser, QWidget* parent)
    : QWidget(parent), m_browser(browser), m_hits(new QListWidget(this)), m_caption(new QLabel(this)),
      m_text(new QLineEdit(this)), m_previous(new QToolButton(this)), m_next(new QToolButton(this)),
      m_result(new QLabel(this))
{
    m_hits->setObjectName(QStringLiteral("findHits"));
    m_hits->setTextElideMode(Qt::ElideRight);
    m_hits->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_hits->hide();
    m_text->setObjectName(QStringLiteral("findText"));
    m_text->setClearButtonEnabled(true);
    m_text->installEventFilter(this);
    m_caption->setBuddy(m_text);
    m_result->setObjectName(QStringLiteral("findResult"));
    setupRow();
    connect(m_text, &QLineEdit::returnPressed, this, &HelpFindBar::findNext);
    connect(m_text, &QLineEdit::textEdited, this, &HelpFindBar::listHits);
    connect(m_hits, &QListWidget::currentRowChanged, this, &HelpFindBar::showHit);
    connect(m_previous, &QToolButton::clicked, this, &HelpFindBar::findPrevious);
    connect(m_next, &QToolButton::clicked, this, &HelpFindBar::findNext);
}

void HelpFindBar::setupRow()
{
    auto* row = new QHBoxLayout;
    for (QWidget* part : {static_cast<QWidget*>(m_caption), static_cast<QWidget*>(m_text),
                          static_cast<QWidget*>(m_previous), static_cast<QWidget*>(m_next)})
        row->addWidget(part);
    row->addWidget(m_result, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_hits);
    layout->addLayout(row);
}

void HelpFindBar::translate(const Translate& translate)
{
    m_caption->setText(translate(QStringLiteral("Find:")));
    m_previous->setText(translate(QStringLiteral("Previous")));
    m_next->setText(translate(QStringLiteral("Next")));
    m_notFound = translate(QStringLiteral("Not found on this page"));
    m_placesText = translate(QStringLiteral("Places in the manual: %1"));
    m_hits->setAccessibleName(m_placesText.arg(QString()));
    m_result->clear();
}

void HelpFindBar::open()
{
    if (m_search.folder() != m_browser.folder())
        m_search = ManualSearch(m_browser.folder());
    show();
    m_text->selectAll();
    m_text->setFocus();
}

void HelpFindBar::listHits()
{
    if (m_search.folder() != m_browser.folder()) // another language
        m_search = ManualSearch(m_browser.folder());
    m_found = m_search.find(m_text->text());
    const QSignalBlocker blocker(m_hits);
    m_hits->clear();
    for (const ManualSearch::Hit& hit : m_found) {
        const QString place = hit.heading == hit.title ? hit.title : hit.title + QStringLiteral(", ") + hit.heading;
        m_hits->addItem(visibleText(place + QStringLiteral(":  ") + hit.excerpt));
    }
    m_hits->setVisible(!m_found.empty());
    const int rows = std::min(m_hits->count(), kShownHits);
    if (rows > 0)
        m_hits->setFixedHeight(rows * m_hits->sizeHintForRow(0) + 2 * m_hits->frameWidth());
    m_result->setText(m_text->text().isEmpty() ? QString() : m_placesText.arg(m_found.size()));
}

void HelpFindBar::showHit(int row)
{
    if (row < 0 || row >= static_cast<int>(m_found.size()))
        return;
    const ManualSearch::Hit& hit = m_found[static_cast<size_t>(row)];
    m_browser.showPage(m_browser.folder(), hit.page, hit.anchor);
    m_browser.moveCursor(QTextCursor::Start);
    for (int i = 0; i <= hit.before; ++i) {
        if (!m_browser.find(m_text->text().simplified()))
            break;
    }
}

bool HelpFindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress || m_found.empty())
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const int step = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
    const int row = m_hits->currentRow() + step;
    if (step != 0 && row >= 0 && row < m_hits->count())
        m_hits->setCurrentRow(row);
    return step != 0;
}

void HelpFindBar::find(QTextDocument::FindFlags flags)
{
    if (m_text->text().isEmpty()) {
        open();
        return;
    }
    bool found = m_browser.find(m_text->text(), flags);
    if (!found) {
        const QTextCursor before = m_browser.textCursor();
        QTextCursor around = before;
        around.movePosition(flags.testFlag(QTextDocument::FindBackward) ? QTextCursor::End : QTextCursor::Start);
        m_browser.setTextCursor(around);
        found = m_browser.find(m_text->text(), flags);
        if (!found)
            m_browser.setTextCursor(before);
    }
    m_result->setText(found ? QString() : m_notFound);
}

} // namespace platform
