#include "MessageBoxQuestions.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QVector>

namespace {

constexpr int kIconBits = 0x70;
constexpr int kSecondIsDefault = 256;
constexpr int kThirdIsDefault = 512;
constexpr int kSetCount = 6;

struct Button
{
    QMessageBox::StandardButton button;
    int result;
};

// Button sets by number, buttons from left to right.
QVector<Button> buttonsOf(int style)
{
    static const Button ok{QMessageBox::Ok, MessageResult::kOk};
    static const Button cancel{QMessageBox::Cancel, 2};
    static const Button retry{QMessageBox::Retry, 4};
    static const Button yes{QMessageBox::Yes, MessageResult::kYes};
    static const Button no{QMessageBox::No, MessageResult::kNo};
    const int rest = style & ~(kIconBits | kSecondIsDefault | kThirdIsDefault);
    switch (rest % kSetCount) {
    case 1:
        return {ok, cancel};
    case 2:
        return {{QMessageBox::Abort, 3}, retry, {QMessageBox::Ignore, 5}};
    case 3:
        return {yes, no, cancel};
    case 4:
        return {yes, no};
    case 5:
        return {retry, cancel};
    default:
        return {ok};
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & kIconBits) {
    case MessageStyle::kCritical:
        return QMessageBox::Critical;
    case MessageStyle::kExclamation:
        return QMessageBox::Warning;
    case MessageStyle::kInformation:
        return QMessageBox::Information;
    case 0:
        return QMessageBox::NoIcon;
    default:
        return QMessageBox::Question;
    }
}

int defaultIndex(int style)
{
    return (style & kThirdIsDefault) != 0 ? 2 : (style & kSecondIsDefault) != 0 ? 1 : 0;
}

} // namespace

int MessageBoxQuestions::showMessage(const QString& text, int style, const QString& title)
{
    const QVector<Button> buttons = buttonsOf(style);
    QMessageBox box(iconOf(style), title.isEmpty() ? QCoreApplication::applicationName() : title, text,
                    QMessageBox::NoButton, m_owner);
    box.setObjectName(QStringLiteral("frmMessageBox"));
    box.setTextFormat(Qt::PlainText);
    for (const Button& each : buttons)
        box.addButton(each.button);
    box.setDefaultButton(buttons.value(defaultIndex(style), buttons.first()).button);
    const int pressed = box.exec();
    for (const Button& each : buttons) {
        if (each.button == pressed)
            return each.result;
    }
    return buttons.last().result;
}
