#pragma once

#include "ControllerState.h"
#include "MessagePresenter.h"
#include "ProgressView.h"
#include "ReadTransfer.h"
#include "RequestChannel.h"
#include "TransferReports.h"
#include "WriteJournal.h"
#include "WriteTransfer.h"
#include "clsKX.h"

#include <QObject>

#include <functional>

class clsCfg;
class Log;
class uclComm;

// Moves parameters between the controller and the memory images, without a window. One transfer at a time; each returns
// when it has ended, dispatching events while it waits. ProgCancel asks a transfer to stop (a read after the next
// failed attempt, a write after the entry at hand; a request of whose reply no byte has come fails soon); abort ends it
// at once and quietly, for a program that is closing. All parts are kept by reference and must outlive the engine.
class TransferEngine : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        clsKX& kx;
        uclComm& link;
        clsCfg& settings;
        Log& traceLog;
        MessagePresenter& questions;
        ProgressView& progress;
        ControllerState& controller;
    };

    explicit TransferEngine(const Parts& parts, QObject* parent = nullptr);

    // Reads everything. colRefData: the blocks to refresh at the end; null for all items.
    void getDataFromKX(const std::vector<clsBlock*>* colRefData);

    // Each write is one user action with one report; the settings open, where they must, when it is over.
    // Writes one parameter at once; its type, 0 when the write did not come to its end.
    int setDataToKXOne(const QString& sTag);
    // Writes these parameters and nothing else, after a look at what the controller holds of them now, and reads them
    // back; lastWrite says of each what became of it.
    void writeChosen(const QStringList& tags);
    // Writes all blocks and reads everything back.
    void setDataToKXAll();
    // What the controller held is kept in the backups before each write. Where it cannot be kept: the user is asked, or
    // the write is given up. Or nothing is kept.
    enum class Backup { AskWithout, Required, None };
    void setBackup(Backup backup) { m_backup = backup; }
    const QString& backupError() const { return m_backupError; } // of the last write
    // Each write is entered in the journal before its first frame; where that fails the same rule holds.
    const QString& journalError() const { return m_journalError; } // of the last write
    // Writes a block with its relay blocks; with readBack the written blocks are read back and shown.
    void writeBlock(const clsBlock& block, bool readBack);
    // Writes a block (null: none) with its relay blocks, then one parameter at once, under one question and report.
    void writeBlockThenOne(const clsBlock* block, const QString& sTag);

    void ProgCancel(int Index);
    void abort();
    enum class Activity { Idle, Reading, Writing };
    Activity activity() const { return m_activity; }
    bool isClosing() const { return m_channel.isAborted(); } // abort was called: nothing is begun any more
    bool isBusy() const { return m_activity != Activity::Idle; }
    int exceptionCode() const { return m_channel.exceptionCode(); } // of the last request; 0: it was not refused
    LineStatistics& statistics() { return m_channel.statistics(); }
    const ReadReport& lastRead() const { return m_read.report(); }
    const WriteReport& lastWrite() const { return m_write.report(); }

Q_SIGNALS:
    // A request got no valid reply; attempt counts from 1, maximum is the number of attempts.
    void attemptFailed(const QString& entry, int attempt, int maximum, const QString& reason);
    void activityChanged();
    // A read has ended, whatever way.
    void readEnded();
    // A write and the read-back that belongs to it have ended.
    void written();
    // The controller is another model than the one chosen. Emitted last, when nothing is under way any more.
    void settingsWanted();

private:
    class Work;

    bool mayBegin();
    bool write(const std::function<bool()>& send, bool readBack);
    void reportLostLine();
    std::vector<clsKXAdr> imageCopies() const;
    bool keepHeldSet(const QString& cause);
    bool beforeFirstFrame(const QString& cause, const QVector<SentParameter>& parameters);
    bool mayGoWithout(const QString& question, const QString& error);
    bool beginJournal(const QString& cause, const QVector<SentParameter>& parameters);
    void completeJournal();
    void readBackAfterWrite();
    void showSettingsWhereNeeded(bool isWrongModel);

    Parts m_parts;
    RequestChannel m_channel;
    ReadTransfer m_read;
    WriteTransfer m_write;
    Activity m_activity = Activity::Idle;
    Backup m_backup = Backup::AskWithout;
    QString m_backupError;
    WriteJournal m_journal;
    QString m_journalError;
};
