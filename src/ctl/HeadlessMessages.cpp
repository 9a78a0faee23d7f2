#include "HeadlessMessages.h"

#include "MessageBoxPlan.h"

int HeadlessMessages::present(const Message& message)
{
    const MessageBoxPlan plan(message.style);
    if (plan.offers(MessageResult::kYes))
        return MessageResult::kYes;
    if (plan.buttons().size() == 1)
        m_lastNotice = message.prompt;
    return plan.offers(MessageResult::kOk) ? MessageResult::kOk : plan.escapeResult();
}
