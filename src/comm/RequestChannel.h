#pragma once

#include "EventWait.h"
#include "LineStatistics.h"
#include "Log.h"
#include "clsModbus.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class clsLibrary;
class uclComm;

namespace platform {
class Timer;
}

// One request at a time: sends what the Modbus master holds over the serial link and waits, dispatching events, until
// the link reports how it ended. Every frame is a line of the trace log.
//
// Replies name no address. One that comes after its request was given up could be taken for that of another request of
// the same function and length: such a request waits until no late reply can be on its way any more. A refusal has one
// length for all: it ends the wait of a request at once only where no late one to another request can be on its way.
//
// Order of calls: begin at the start of a transfer; then for each request a request operation of modbus(), traceRequest
// and exchange. The link, the library and the log are kept by reference and must outlive the channel.
class RequestChannel : public QObject
{
    Q_OBJECT

public:
    // How much later than the time-out a reply may still come, if none has been seen to be later.
    static constexpr int kLatestSeconds = 5;
    // How long a cancelled request still waits for the first byte of its reply.
    static constexpr int kCancelMs = 150;

    // How a request ended.
    enum class Result { WrongModel = -2, Refused = -1, Success = 0, Failed = 1 };

    RequestChannel(uclComm& link, const clsLibrary& library, Log& traceLog, QObject* parent = nullptr);
    ~RequestChannel() override;

    clsModbus& modbus() { return m_clsModbus; }
    void setTraceLog(Log& traceLog) { m_traceLog = traceLog; }
    // mode: 0 RTU, 1 ASCII. Throws ModbusError for an address outside 1 to 247.
    void setSlave(int slave, int mode);
    void begin(int slave, int mode); // counts and reasons begin anew
    // The next exchange leaves a line of its request under this tag, when it sends it.
    void traceRequest(const QString& tag) { m_traceTag = tag; }
    void traceNow(); // that line at once; also for a request that is built and not sent
    void trace(const QString& tag, const QByteArray& bytes);

    // functionCode: of the request, which its reply must repeat. accepted is called with a sound reply and gives the
    // result then; without it a sound reply is a success.
    Result exchange(quint8 functionCode, const std::function<Result()>& accepted = {});
    // Dispatches events for a time.
    void pause(int milliseconds);

    // Ends the connecting to a serial server, and a wait for late replies: the request that waits for them is not sent
    // and fails. A request that is under way fails after kCancelMs if no byte of its reply has come by then; else its
    // wait ends by itself.
    void cancelWait();

    // Ends a wait at once. Nothing is sent any more, whatever is begun yet, until a new work is allowed to.
    void abort();
    bool isAborted() const { return m_abort; }
    void allow() { m_abort = false; }

    LineStatistics& statistics() { return m_statistics; }
    // Which opening of the port is in use; nothing while it is closed.
    std::optional<int> opening() const;
    QString reason() const { return m_reason; } // why the last request did not succeed, in the user's language
    int exceptionCode() const { return m_exceptionCode; } // by which the last request was refused; 0: it was not
    bool hasReply() const { return m_hasReply; }          // as many bytes as were announced came for it, sound or not
    QByteArray received() const { return m_received; }    // what came for the last request, sound or not
    QString lineText() const;                             // "9600,N,8,1"
    int requests() const { return m_requests; }           // sent since begin
    qint64 wireBytes() const { return m_wireBytes; }      // sent, and announced for replies, since begin

private:
    // A reply that may still come.
    struct LateReply
    {
        int slave = 0;
        quint8 functionCode = 0;
        int size = 0;
        QByteArray request;
        qint64 sentMs = 0;     // its request
        qint64 latenessMs = 0; // after that
        bool isLike(const LateReply& other) const
        {
            return slave == other.slave && functionCode == other.functionCode && size == other.size;
        }
        qint64 restMs(qint64 nowMs) const { return std::max<qint64>(latenessMs - (nowMs - sentMs), 0); }
    };

    Result sendAndWait();
    void count(Result result, qint64 milliseconds);
    bool mayComeLate(const LateReply& reply) const;
    bool waitForLateReply(const LateReply& reply); // false when the wait was ended early
    void expectLate(const LateReply& reply);
    qint64 latenessMs(Result result) const;
    qint64 nowMs() const;
    void onSuccess(const QByteArray& sent, const QByteArray& received);
    void onError(const QByteArray& sent, const QByteArray& received, const QString& text);
    bool mayBeRefusal(const QByteArray& received) const;
    void failWith(const QString& text);
    void giveUpSilent();
    bool isSound(const QByteArray& received);
    QString badReply(int code);
    QString refusal(int code);
    bool announcesItsBytes(const QByteArray& frame) const;
    qsizetype expectedFrameBytes() const;
    void finish(Result result);
    QString tran(const char* english) const;

    uclComm& m_link;
    const clsLibrary& m_library;
    std::reference_wrapper<Log> m_traceLog;
    clsModbus m_clsModbus;
    platform::EventWait m_waiting;
    std::unique_ptr<platform::Timer> m_pause;
    std::unique_ptr<platform::Timer> m_cancel;
    std::function<Result()> m_accepted;
    bool m_bWait = false;
    bool m_hasReply = false;
    bool m_answered = false; // as much as was announced has come, or an exception, sound or not
    bool m_abort = false;
    bool m_isWaitingForLate = false;
    bool m_waitCancelled = false;
    QByteArray m_received;
    QString m_traceTag;
    quint8 m_functionCode = 0;
    Result m_lResult = Result::Success;
    QString m_reason;
    int m_exceptionCode = 0;
    int m_requests = 0;
    qint64 m_wireBytes = 0;
    QByteArray m_lastRequest; // of this transfer; sent again it is a repetition
    qint64 m_firstSentMs = 0; // the last request, before its repetitions
    std::vector<LateReply> m_late;
    LineStatistics m_statistics;
};
