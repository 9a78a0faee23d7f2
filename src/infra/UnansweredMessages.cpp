#include "UnansweredMessages.h"

#include "MessageBoxPlan.h"

int UnansweredMessages::present(const Message& message)
{
    m_errorLog.get().LogWrite(QStringLiteral("[LibraryError]showMessage: ") + message.prompt);
    return MessageBoxPlan(message.style).defaultResult();
}
