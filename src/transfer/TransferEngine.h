#pragma once

#include "EventWait.h"
#include "TransferPorts.h"
#include "clsKX.h"
#include "clsModbus.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

class clsCfg;
class clsLog;
class uclComm;

// How the last read ended.
enum class ReadOutcome {
    None,        // no read yet, or the user declined
    Complete,    // walked to its end; see ReadReport::givenUp
    LinkRefused, // the port is closed or busy
    WrongModel,  // the controller's model string differs from the selected one
    Cancelled,
    Aborted // the program is closing
};

struct ReadReport
{
    ReadOutcome outcome = ReadOutcome::None;
    int requests = 0;      // frames sent, repetitions included
    int failures = 0;      // frames without a valid reply
    QStringList givenUp;   // entries that got no valid reply, as "section: command address"
    QString lastFailure;   // what went wrong last, for a person
    QString answeredModel; // the model string at FBC0, when it was read
    qint64 wireBytes = 0;  // bytes sent and bytes of the replies expected, for measures
};

// Moves parameters between the controller and the memory images, without a window. One transfer at a time.
//
// getDataFromKX walks the read command list of every memory image; each entry is one request, sent up to six times. It
// returns when the read has ended, dispatching events while it waits. ProgCancel asks it to stop after the next failed
// attempt; abort ends it at once and quietly, for a program that is closing.
// All parts are kept by reference and must outlive the engine.
class TransferEngine : public QObject
{
    Q_OBJECT

public:
    static constexpr int kRetries = 5; // repetitions of a request after the first sending

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

    // colRefData: the blocks to refresh at the end; null for all items.
    void getDataFromKX(const std::vector<clsBlock*>* colRefData);
    void ProgCancel(int Index);
    void abort();
    bool isBusy() const { return m_bBusy; }
    const ReadReport& lastRead() const { return m_report; }

Q_SIGNALS:
    // A request got no valid reply; attempt counts from 1, maximum is the number of attempts.
    void attemptFailed(const QString& entry, int attempt, int maximum, const QString& reason);

private:
    // Outcome of the last request.
    enum class Result { WrongModel = -2, Refused = -1, Success = 0, Failed = 1 };
    enum class Step { Next, Stop };

    bool confirmed();
    Step readImage(clsKXAdr& image);
    Step readEntry(clsKXAdr& image, int i);
    bool buildRequest(const QString& command, const QString& address, int count);
    Step sendWithRetries(const QString& entry);
    void noteFailure(const QString& entry, int attempt);
    void onSuccess(const QByteArray& sent, const QByteArray& received);
    void onError(const QByteArray& sent, const QByteArray& received, const QString& text);
    bool acceptReply(const QByteArray& received);
    void storeReply();
    void finishNormally(const std::vector<clsBlock*>* colRefData);
    void finishStopped();
    QString tran(const QString& english) const;
    QString tran(const char* english) const;
    void trace(const QString& tag, const QByteArray& bytes);

    Parts m_parts;
    clsModbus m_clsModbus;
    platform::EventWait m_wait;
    clsKXAdr* m_objAdr = nullptr;
    bool m_bCancel = false;
    bool m_bWait = false;
    bool m_bReading = false;
    bool m_bBusy = false;
    bool m_abort = false;
    bool m_imageComplete = true;
    quint8 m_functionCode = 0; // of the request that is out
    Result m_lResult = Result::Success;
    QString m_reason;
    ReadReport m_report;
};
