#pragma once

#include <QString>

// Styles and results of a message, with the platform's own numbers.
namespace MessageStyle {
constexpr int kCritical = 16;
constexpr int kExclamation = 48;
constexpr int kYesNoExclamation = 52;
constexpr int kInformation = 64;
} // namespace MessageStyle

namespace MessageResult {
constexpr int kOk = 1;
constexpr int kYes = 6;
constexpr int kNo = 7;
} // namespace MessageResult

// How questions and notices reach the user. The window, the command line and the tests each have their own.
class MessagePresenter
{
public:
    virtual ~MessagePresenter() = default;
    // Shows a notice or question; returns the code of the button pressed.
    virtual int showMessage(const QString& text, int style, const QString& title) = 0;
};
