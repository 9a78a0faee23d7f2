#pragma once

#include "ReadTransfer.h"
#include "RequestChannel.h"
#include "TransferPorts.h"
#include "TransferReports.h"
#include "WriteTransfer.h"
#include "clsKX.h"

#include <QObject>

class clsCfg;
class clsLog;
class uclComm;

// Moves parameters between the controller and the memory images, without a window. One transfer at a time; each returns
// when it has ended, dispatching events while it waits. ProgCancel asks a transfer to stop (a read after the next
// failed attempt, a write after the entry at hand); abort ends it at once and quietly, for a program that is closing.
// All parts are kept by reference and must outlive the engine.
class TransferEngine : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        clsKX& kx;
        uclComm& link;
        clsCfg& settings;
        clsLog& traceLog;
        MessagePresenter& questions;
        ProgressView& progress;
        TransferShell& shell;
    };

    explicit TransferEngine(const Parts& parts, QObject* parent = nullptr);

    // Reads everything. colRefData: the blocks to refresh at the end; null for all items.
    void getDataFromKX(const std::vector<clsBlock*>* colRefData);

    // Writes one parameter at once; its type, 0 when nothing was written.
    int setDataToKXOne(const QString& sTag);
    // Writes all blocks and reads everything back. The set last read is kept in the backups before.
    void setDataToKXAll();
    // Writes a block with its relay blocks; with readBack the written blocks are read back and shown.
    void writeBlock(const clsBlock& block, bool readBack);

    void ProgCancel(int Index);
    void abort();
    bool isBusy() const { return m_bBusy; }
    const ReadReport& lastRead() const { return m_read.report(); }
    const WriteReport& lastWrite() const { return m_write.report(); }

    // What the controller held at the last complete read, for a copy that a wrong write can be undone with.
    const ParameterSet& lastSet() const { return m_lastSet; }

Q_SIGNALS:
    // A request got no valid reply; attempt counts from 1, maximum is the number of attempts.
    void attemptFailed(const QString& entry, int attempt, int maximum, const QString& reason);
    // A read has ended, whatever way.
    void readEnded();
    // A write and the read-back that belongs to it have ended.
    void written();

private:
    bool mayBegin() const { return !m_bBusy && !m_channel.isAborted(); } // not once the program is closing
    bool keepLastSet();
    void readBackAfterWrite(const std::vector<clsBlock*>* blocks);

    Parts m_parts;
    RequestChannel m_channel;
    ReadTransfer m_read;
    WriteTransfer m_write;
    ParameterSet m_lastSet;
    bool m_bBusy = false;
};
