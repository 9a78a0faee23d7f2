#include "TransferEngine.h"

#include "BackupStore.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <QScopedValueRollback>

TransferEngine::TransferEngine(const Parts& parts, QObject* parent)
    : QObject(parent), m_parts(parts), m_channel({parts.link, parts.traceLog, parts.kx.library(), parts.shell}),
      m_read({parts.kx, parts.settings, parts.questions, parts.progress, parts.shell, m_channel},
             [this](const QString& entry, int attempt, int maximum, const QString& reason) {
                 Q_EMIT attemptFailed(entry, attempt, maximum, reason);
             }),
      m_write({parts.kx, parts.settings, parts.questions, parts.progress, parts.shell, m_channel})
{}

void TransferEngine::getDataFromKX(const std::vector<clsBlock*>* colRefData)
{
    if (!mayBegin())
        return;
    {
        const QScopedValueRollback<bool> busy(m_bBusy, true);
        m_read.run(colRefData);
    }
    const ReadOutcome outcome = lastRead().outcome;
    if (outcome == ReadOutcome::Complete)
        m_lastSet = m_parts.kx.knownSet();
    Q_EMIT readEnded();
    // The settings may end in a read of their own: this one is over by then.
    if (outcome == ReadOutcome::WrongModel)
        m_parts.shell.showCommSetting();
}

int TransferEngine::setDataToKXOne(const QString& sTag)
{
    if (!mayBegin())
        return 0;
    bool sent = false;
    {
        const QScopedValueRollback<bool> busy(m_bBusy, true);
        sent = m_write.writeOne(sTag);
    }
    if (lastWrite().outcome == WriteOutcome::WrongModel)
        m_parts.shell.showCommSetting();
    const clsData* item = m_parts.kx.getDataByTag(sTag);
    Q_EMIT written();
    return sent && item != nullptr ? static_cast<int>(item->MType()) : 0;
}

void TransferEngine::setDataToKXAll()
{
    if (!mayBegin() || !keepLastSet())
        return;
    bool sent = false;
    {
        const QScopedValueRollback<bool> busy(m_bBusy, true);
        sent = m_write.writeAll();
    }
    if (sent)
        readBackAfterWrite(nullptr);
    else if (lastWrite().outcome == WriteOutcome::WrongModel)
        m_parts.shell.showCommSetting();
    Q_EMIT written();
}

void TransferEngine::writeBlock(const clsBlock& block, bool readBack)
{
    if (!mayBegin())
        return;
    bool sent = false;
    {
        const QScopedValueRollback<bool> busy(m_bBusy, true);
        sent = m_write.writeBlock(block);
    }
    if (sent && readBack)
        readBackAfterWrite(&m_write.writtenBlocks());
    else if (lastWrite().outcome == WriteOutcome::WrongModel)
        m_parts.shell.showCommSetting();
    Q_EMIT written();
}

// True when the write may go on: the set is kept, there is none, or the user does without.
bool TransferEngine::keepLastSet()
{
    if (m_parts.shell.state() != MainState::UpToDate || m_lastSet.values.isEmpty() || m_parts.settings.m_bComm)
        return true;
    clsLibrary& library = m_parts.kx.library();
    const QString error = BackupStore(library).keep(m_lastSet, m_parts.kx.Ext());
    if (error.isEmpty())
        return true;
    const QString question =
        library.tranStr(QStringLiteral("The parameters last read cannot be kept: %1vbCrLfWrite all the same?"))
            .arg(error);
    return m_parts.questions.showMessage(question, MessageStyle::kYesNoExclamation) == MessageResult::kYes;
}

// Only what was written is shown anew: changes in other blocks are not lost.
void TransferEngine::readBackAfterWrite(const std::vector<clsBlock*>* blocks)
{
    getDataFromKX(blocks);
    if (lastRead().outcome == ReadOutcome::Complete)
        m_write.compareWithReadBack();
}

void TransferEngine::ProgCancel(int Index)
{
    Q_UNUSED(Index);
    m_read.cancel();
    m_write.cancel();
    m_channel.cancelWait();
}

void TransferEngine::abort()
{
    m_channel.abort();
}
