#include "HelpFindBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolButton>

namespace platform {

HelpFindBar::HelpFindBar(QTextBrowser& browser, QWidget* parent)
    : QWidget(parent), m_browser(browser), m_caption(new QLabel(this)), m_text(new QLineEdit(this)),
      m_previous(new QToolButton(this)), m_next(new QToolButton(this)), m_result(new QLabel(this))
{
    m_text->setObjectName(QStringLiteral("findText"));
    m_text->setClearButtonEnabled(true);
    m_caption->setBuddy(m_text);
    m_result->setObjectName(QStringLiteral("findResult"));
    auto* layout = new QHBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(m_caption), static_cast<QWidget*>(m_text),
                          static_cast<QWidget*>(m_previous), static_cast<QWidget*>(m_next)})
        layout->addWidget(part);
    layout->addWidget(m_result, 1);
    connect(m_text, &QLineEdit::returnPressed, this, &HelpFindBar::findNext);
    connect(m_text, &QLineEdit::textEdited, m_result, &QLabel::clear);
    connect(m_previous, &QToolButton::clicked, this, &HelpFindBar::findPrevious);
    connect(m_next, &QToolButton::clicked, this, &HelpFindBar::findNext);
}

void HelpFindBar::translate(const Translate& translate)
{
    m_caption->setText(translate(QStringLiteral("Find:")));
    m_previous->setText(translate(QStringLiteral("Previous")));
    m_next->setText(translate(QStringLiteral("Next")));
    m_notFound = translate(QStringLiteral("Not found on this page"));
    m_result->clear();
}

void HelpFindBar::open()
{
    show();
    m_text->selectAll();
    m_text->setFocus();
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
