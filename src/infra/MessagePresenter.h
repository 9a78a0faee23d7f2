#pragma once

#include <QString>

// Questions and notices to the user: their styles and results with the platform's own numbers, and the one interface
// through which they are asked. The window, the command line and the tests each have their own presenter.

// A style is one button set, one icon and one default button, added up.
namespace MessageStyle {
constexpr int kOkOnly = 0;
constexpr int kOkCancel = 1;
constexpr int kAbortRetryIgnore = 2;
constexpr int kYesNoCancel = 3;
constexpr int kYesNo = 4;
constexpr int kRetryCancel = 5;
constexpr int kCritical = 16;
constexpr int kQuestion = 32;
constexpr int kExclamation = 48;
constexpr int kInformation = 64;
constexpr int kSecondIsDefault = 256;
constexpr int kThirdIsDefault = 512;
constexpr int kYesNoExclamation = kYesNo + kExclamation;
} // namespace MessageStyle

namespace MessageResult {
constexpr int kOk = 1;
constexpr int kCancel = 2;
constexpr int kAbort = 3;
constexpr int kRetry = 4;
constexpr int kIgnore = 5;
constexpr int kYes = 6;
constexpr int kNo = 7;
constexpr int kExtra = 8; // the button beside those of the style
} // namespace MessageResult

// A question or notice as it is presented.
struct Message
{
    QString prompt; // in the user's language
    int style = MessageStyle::kOkOnly;
    QString title;        // empty: the program's name
    int timerSeconds = 0; // closes itself after that time; 0: stays until it is answered
    QString extra;        // English caption of a button beside those of the style; empty: there is none
};

// Asks the person at the program. The context refers to the one in use, which its maker owns.
class MessagePresenter
{
public:
    virtual ~MessagePresenter() = default;

    // Shows a notice or question and waits for the answer; returns the code of the button pressed. A message that
    // closed itself returns its default button's code.
    int showMessage(const QString& prompt, int style, const QString& title = {}, int timerSeconds = 0)
    {
        return present({prompt, style, title, timerSeconds, {}});
    }
    // A question that can be answered in one more way.
    int showChoice(const QString& prompt, int style, const QString& extra)
    {
        return present({prompt, style, {}, 0, extra});
    }

protected:
    virtual int present(const Message& message) = 0;
};
