#include "MessageBoxPlan.h"

#include "VisibleText.h"

namespace {

constexpr int kSetCount = 6;

struct IconRow
{
    int bits;
    MessageIcon icon;
};

// In the order of the look-up: the exclamation's bits hold those of question and stop.
constexpr IconRow kIcons[] = {{MessageStyle::kInformation, MessageIcon::Information},
                              {MessageStyle::kExclamation, MessageIcon::Exclamation},
                              {MessageStyle::kQuestion, MessageIcon::Question},
                              {MessageStyle::kCritical, MessageIcon::Stop}};

// Takes the icon's bits out of the style; bits of another icon stay and count for the button set.
MessageIcon extractIcon(int& style)
{
    for (const IconRow& row : kIcons) {
        if ((style & row.bits) == row.bits) {
            style &= ~row.bits;
            return row.icon;
        }
    }
    return MessageIcon::None;
}

int extractDefault(int& style)
{
    int index = 0;
    if ((style & MessageStyle::kThirdIsDefault) != 0)
        index = 2;
    else if ((style & MessageStyle::kSecondIsDefault) != 0)
        index = 1;
    style &= ~(MessageStyle::kSecondIsDefault | MessageStyle::kThirdIsDefault);
    return index;
}

QVector<MessageButton> buttonSet(int number)
{
    const MessageButton ok{QStringLiteral("OK"), MessageResult::kOk};
    const MessageButton cancel{QStringLiteral("Cancel"), MessageResult::kCancel};
    const MessageButton retry{QStringLiteral("Retrial"), MessageResult::kRetry};
    const MessageButton yes{QStringLiteral("Yes"), MessageResult::kYes};
    const MessageButton no{QStringLiteral("No"), MessageResult::kNo};
    switch (number) {
    case MessageStyle::kOkCancel:
        return {ok, cancel};
    case MessageStyle::kAbortRetryIgnore:
        return {{QStringLiteral("Stop"), MessageResult::kAbort},
                retry,
                {QStringLiteral("Disregard"), MessageResult::kIgnore}};
    case MessageStyle::kYesNoCancel:
        return {yes, no, cancel};
    case MessageStyle::kYesNo:
        return {yes, no};
    case MessageStyle::kRetryCancel:
        return {retry, cancel};
    default:
        return {ok};
    }
}

} // namespace

MessageBoxPlan::MessageBoxPlan(int style, const QString& extra)
{
    const int wantedDefault = extractDefault(style);
    m_icon = extractIcon(style);
    m_buttons = buttonSet(style % kSetCount);
    if (!extra.isEmpty())
        m_buttons.append({extra, MessageResult::kExtra});
    m_defaultIndex = wantedDefault < m_buttons.size() ? wantedDefault : 0;
}

int MessageBoxPlan::indexOf(int result) const
{
    for (int i = 0; i < m_buttons.size(); ++i) {
        if (m_buttons[i].result == result)
            return i;
    }
    return -1;
}

int MessageBoxPlan::escapeIndex() const
{
    for (const int result : {MessageResult::kCancel, MessageResult::kNo}) {
        if (offers(result))
            return indexOf(result);
    }
    return 0;
}

QString MessageBoxPlan::shownText(const QString& prompt)
{
    return platform::visibleLines(QString(prompt).replace(QStringLiteral("vbCrLf"), QStringLiteral("\n")));
}
