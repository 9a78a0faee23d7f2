#include "IniBatch.h"

platform::Result<> IniBatch::commit()
{
    platform::Result<> outcome = m_batch.commit();
    note(m_context, kPutFailure, outcome);
    return outcome;
}

void IniBatch::commitLogged()
{
    note(m_context, kPutFailure, m_batch.commit());
}

// The same failure again and again (every key of a read-only file) is one line, not thousands.
void IniBatch::note(const Context& context, int number, const platform::Result<>& outcome)
{
    if (!outcome.ok() && !outcome.isRepeated())
        context.errorLog.get().LogWrite(QStringLiteral("Exception error　%1->").arg(number) + outcome.error());
}
