#include "TransferEngine.h"

#include "BackupStore.h"
#include "HeldValue.h"
#include "clsCfg.h"
#include "clsLibrary.h"
#include "uclComm.h"

TransferEngine::TransferEngine(const Parts& parts, QObject* parent)
    : QObject(parent), m_parts(parts), m_channel(parts.link, parts.kx.library(), parts.traceLog),
      m_read({parts.kx, parts.settings, parts.questions, parts.progress, parts.controller, m_channel},
             [this](const QString& entry, int attempt, int maximum, const QString& reason) {
                 Q_EMIT attemptFailed(entry, attempt, maximum, reason);
             }),
      m_write({parts.kx, parts.settings, parts.questions, parts.progress, parts.controller, m_channel}, m_read,
              [this](const QString& cause, const QVector<SentParameter>& parameters) {
                  return beforeFirstFrame(cause, parameters);
              }),
      m_journal(parts.kx, parts.controller)
{}

// What is going on, for as long as it lives.
class TransferEngine::Work
{
public:
    Work(TransferEngine& engine, Activity activity) : m_engine(engine) { set(activity); }
    ~Work() { set(Activity::Idle); }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    void set(Activity activity)
    {
        m_engine.m_activity = activity;
        Q_EMIT m_engine.activityChanged();
    }

    TransferEngine& m_engine;
};

// Not once the program is closing. An adapter that was plugged in again is used again.
bool TransferEngine::mayBegin()
{
    if (isBusy() || m_channel.isAborted())
        return false;
    if (!m_parts.settings.m_bComm && m_parts.link.State() == 0)
        m_parts.link.prepareComm();
    return true;
}

void TransferEngine::getDataFromKX(const std::vector<clsBlock*>* colRefData)
{
    if (!mayBegin())
        return;
    {
        const Work work(*this, Activity::Reading);
        m_read.run(colRefData, ReadTransfer::Purpose::Show);
    }
    if (lastRead().outcome == ReadOutcome::Complete)
        m_write.clearReport(); // what was not written once is of no interest any more
    Q_EMIT readEnded();
    showSettingsWhereNeeded(lastRead().outcome == ReadOutcome::WrongModel);
}

int TransferEngine::setDataToKXOne(const QString& sTag)
{
    const bool sent = write([&] { return m_write.writeItems({sTag}); }, false);
    const clsData* item = sent ? m_parts.kx.getDataByTag(sTag) : nullptr;
    return item == nullptr ? 0 : static_cast<int>(item->MType());
}

void TransferEngine::writeChosen(const QStringList& tags)
{
    write([&] { return m_write.writeChosen(tags); }, false);
}

void TransferEngine::setDataToKXAll()
{
    write([this] { return m_write.writeAll(); }, true);
}

void TransferEngine::writeBlock(const clsBlock& block, bool readBack)
{
    write([&] { return m_write.writeBlock(block); }, readBack);
}

void TransferEngine::writeBlockThenOne(const clsBlock* block, const QString& sTag)
{
    write([&] { return m_write.writeBlockThenOne(block, sTag); }, false);
}

// The settings come last: they may load another model, and end in a read of their own.
bool TransferEngine::write(const std::function<bool()>& send, bool readBack)
{
    if (!mayBegin())
        return false;
    m_backupError.clear();
    m_journalError.clear();
    bool sent = false;
    bool isWrongModel = false;
    bool isLineLost = false;
    {
        const Work work(*this, Activity::Writing);
        sent = send();
        isWrongModel = lastWrite().outcome == WriteOutcome::WrongModel;
        isLineLost = sent && readBack && !m_parts.settings.m_bComm && m_parts.link.State() == 0;
        if (sent && readBack && !isLineLost) {
            readBackAfterWrite();
            isWrongModel = lastRead().outcome == ReadOutcome::WrongModel;
        } else {
            m_parts.kx.refreshSpread(false, nullptr);
        }
    }
    completeJournal();
    Q_EMIT written();
    if (isLineLost)
        reportLostLine();
    showSettingsWhereNeeded(isWrongModel);
    return sent;
}

std::vector<clsKXAdr> TransferEngine::imageCopies() const
{
    std::vector<clsKXAdr> copies;
    copies.reserve(static_cast<size_t>(m_parts.kx.ColAdr().count()));
    for (int i = 0; i < m_parts.kx.ColAdr().count(); ++i)
        copies.push_back(m_parts.kx.ColAdr().at(i));
    return copies;
}

// Without a line nothing can be read back. The images stay what they are, so that the write can be repeated at once.
void TransferEngine::reportLostLine()
{
    const QString text = m_parts.kx.library().tranStr(QStringLiteral("Reception error occurred."));
    m_parts.questions.showMessage(text + QStringLiteral("[%1]").arg(static_cast<int>(RequestChannel::Result::Refused)),
                                  MessageStyle::kExclamation);
}

bool TransferEngine::beforeFirstFrame(const QString& cause, const QVector<SentParameter>& parameters)
{
    if (m_parts.settings.m_bComm)
        return true;
    return keepHeldSet(cause) && beginJournal(cause, parameters);
}

// What cannot be kept is told before the first frame.
bool TransferEngine::mayGoWithout(const QString& question, const QString& error)
{
    if (m_backup == Backup::Required)
        return false;
    const QString text = m_parts.kx.library().tranStr(question).arg(error);
    return m_backup == Backup::None ||
           m_parts.questions.showMessage(text, MessageStyle::kYesNoExclamation) == MessageResult::kYes;
}

bool TransferEngine::beginJournal(const QString& cause, const QVector<SentParameter>& parameters)
{
    m_journalError = m_journal.begin(cause, m_parts.link.recordedDevice(), parameters).error();
    if (m_journalError.isEmpty())
        return true;
    m_parts.kx.logError(m_journalError);
    return mayGoWithout(QStringLiteral("The write cannot be entered in the history: %1vbCrLfWrite all the same?"),
                        m_journalError);
}

void TransferEngine::completeJournal()
{
    const platform::Result<> completed = m_journal.complete(lastWrite());
    if (completed.ok())
        return;
    m_parts.kx.logError(completed.error());
    const QString text =
        m_parts.kx.library().tranStr(QStringLiteral("The result of the write cannot be entered in the history: %1"));
    m_parts.questions.showMessage(text.arg(completed.error()), MessageStyle::kExclamation);
}

// True when the write may go on: the set is kept, there is none, or the user does without.
bool TransferEngine::keepHeldSet(const QString& cause)
{
    const ParameterSet set = heldSet(m_parts.kx.data());
    if (m_backup == Backup::None || set.values.isEmpty())
        return true;
    clsLibrary& library = m_parts.kx.library();
    const uclComm& link = m_parts.link;
    const QString comment = library.tranStr(QStringLiteral("before writing %1; COM%2 %3, slave %4"))
                                .arg(cause)
                                .arg(link.Port())
                                .arg(link.recordedDevice())
                                .arg(m_parts.controller.slaveAddress());
    m_backupError = BackupStore(library).keep(set, m_parts.kx.Ext(), comment).error();
    return m_backupError.isEmpty() ||
           mayGoWithout(QStringLiteral("The parameters last read cannot be kept: %1vbCrLfWrite all the same?"),
                        m_backupError);
}

// Only what was written is shown anew: changes in other blocks are not lost. A write of all has no blocks of its own.
void TransferEngine::readBackAfterWrite()
{
    std::vector<clsBlock*> blocks;
    blocks.reserve(static_cast<size_t>(m_write.writtenBlocks().size()));
    for (const int number : m_write.writtenBlocks())
        blocks.push_back(m_parts.kx.getBlockByNo(number));
    const std::vector<clsKXAdr> before = imageCopies();
    m_read.run(m_write.isOfAll() ? nullptr : &blocks, ReadTransfer::Purpose::ReadBack);
    if (lastRead().refreshed)
        m_write.compareWithReadBack();
    else
        m_parts.kx.refreshSpread(false, nullptr);
    // What did not go out can be sent again, although nobody could look: it begins with what is known.
    const bool isUnanswered = lastRead().outcome == ReadOutcome::NoResponse ||
                              lastRead().outcome == ReadOutcome::Cancelled ||
                              lastRead().outcome == ReadOutcome::LinkRefused;
    if (isUnanswered && !lastWrite().unsent.isEmpty()) {
        for (int i = 0; i < m_parts.kx.ColAdr().count(); ++i)
            m_parts.kx.ColAdr().at(i) = before[static_cast<size_t>(i)];
        m_parts.controller.setState(MainState::UpToDate);
    }
    Q_EMIT readEnded();
}

void TransferEngine::showSettingsWhereNeeded(bool isWrongModel)
{
    if (isWrongModel)
        Q_EMIT settingsWanted();
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
