#include "IniBatch.h"

QString IniBatch::commit()
{
    const platform::ProfileOutcome outcome = m_batch.commit();
    note(m_context, kPutFailure, outcome);
    return outcome.error;
}

void IniBatch::commitLogged()
{
    note(m_context, kPutFailure, m_batch.commit());
}

// The same failure again and again (every key of a read-only file) is one line, not thousands.
void IniBatch::note(const Context& context, int number, const platform::ProfileOutcome& outcome)
{
    if (!outcome.ok() && !outcome.isRepeated)
        context.errorLog.get().LogWrite(QStringLiteral("Exception error　%1->").arg(number) + outcome.error);
}
