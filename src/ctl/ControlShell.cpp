#include "ControlShell.h"

int ControlShell::showMessage(const QString& text, int style, const QString& title)
{
    Q_UNUSED(title);
    if (style == MessageStyle::kYesNoExclamation)
        return MessageResult::kYes;
    m_lastNotice = text;
    return MessageResult::kOk;
}
