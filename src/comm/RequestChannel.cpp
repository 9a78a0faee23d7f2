#include "RequestChannel.h"

#include "FrameTexts.h"
#include "ModbusFrame.h"
#include "ProtocolNumbers.h"
#include "clsLibrary.h"
#include "uclComm.h"

#include <algorithm>

namespace {

// Without the spare element that the link puts behind the bytes received.
QByteArray receivedPart(const QByteArray& linkBuffer)
{
    return linkBuffer.left(std::max<qsizetype>(linkBuffer.size() - 1, 0));
}

} // namespace

RequestChannel::RequestChannel(uclComm& link, const clsLibrary& library, Log& traceLog, QObject* parent)
    : QObject(parent), m_link(link), m_library(library), m_traceLog(traceLog),
      m_pause(library.context().machine.clock.makeTimer()), m_cancel(library.context().machine.clock.makeTimer())
{
    connect(&m_link, &uclComm::RecieveSuccess, this, &RequestChannel::onSuccess);
    connect(&m_link, &uclComm::RecieveError, this, &RequestChannel::onError);
    connect(m_cancel.get(), &platform::Timer::timeout, this, &RequestChannel::giveUpSilent);
    connect(m_pause.get(), &platform::Timer::timeout, this, [this] { m_waiting.finish(); });
}

RequestChannel::~RequestChannel() = default;

std::optional<int> RequestChannel::opening() const
{
    return m_link.State() == 0 ? std::nullopt : std::optional(m_link.openings());
}

void RequestChannel::setSlave(int slave, int mode)
{
    m_clsModbus.setSlaveAddress(slave);
    m_clsModbus.setTransmissionMode(mode);
}

void RequestChannel::begin(int slave, int mode)
{
    m_requests = 0;
    m_wireBytes = 0;
    m_reason.clear();
    m_lastRequest.clear();
    m_traceTag.clear();
    setSlave(slave, mode);
}

void RequestChannel::traceNow()
{
    if (!m_traceTag.isEmpty())
        trace(m_traceTag, m_clsModbus.GetSendMessage());
    m_traceTag.clear();
}

void RequestChannel::trace(const QString& tag, const QByteArray& bytes)
{
    m_traceLog.get().LogWrite(tag + m_library.HexString(bytes));
}

RequestChannel::Result RequestChannel::exchange(quint8 functionCode, const std::function<Result()>& accepted)
{
    m_functionCode = functionCode;
    m_accepted = accepted;
    m_received.clear();
    LateReply reply{
        m_clsModbus.SlaveAddress(), functionCode, m_clsModbus.RecvSize(), m_clsModbus.GetSendMessage(), 0, 0};
    std::erase_if(m_late, [this](const LateReply& late) { return late.restMs(nowMs()) == 0; });
    // The late reply to the same request says the same.
    const bool isRepetition = mayComeLate(reply) && m_clsModbus.GetSendMessage() == m_lastRequest;
    if ((!isRepetition && !waitForLateReply(reply)) || m_abort) {
        m_reason = tran("It was cancelled.");
        return Result::Failed;
    }
    m_lastRequest = m_clsModbus.GetSendMessage();
    reply.sentMs = nowMs();
    if (!isRepetition)
        m_firstSentMs = reply.sentMs;
    const Result result = sendAndWait();
    count(result, nowMs() - reply.sentMs);
    // Where late replies are about, an answer may be one of them, and the answer to this request is still to come.
    const bool isOwed = result == Result::Failed && (!m_answered || !m_late.empty());
    if (isOwed || mayComeLate(reply)) {
        reply.latenessMs = latenessMs(result);
        expectLate(reply);
    }
    return result;
}

// An answer to a repetition may be that to the first sending: then the others are as slow.
qint64 RequestChannel::latenessMs(Result result) const
{
    const qint64 usual = m_link.longestWaitMs() + kLatestSeconds * platform::kMsPerSecond;
    return result == Result::Success ? std::max(usual, nowMs() - m_firstSentMs + platform::kMsPerSecond) : usual;
}

RequestChannel::Result RequestChannel::sendAndWait()
{
    m_bWait = true;
    m_hasReply = false;
    m_answered = false;
    m_exceptionCode = 0;
    m_lResult = Result::Success;
    m_waiting.arm();
    const QString refusal = m_link.sendMsg(m_clsModbus.GetSendMessage(), m_clsModbus.RecvSize(),
                                           [this](const QByteArray& bytes) { return mayBeRefusal(bytes); });
    if (refusal.isEmpty() || !m_abort) // the trace shows no frame that the end of the program kept back
        traceNow();
    if (!refusal.isEmpty()) {
        m_bWait = false;
        m_reason = m_link.errorText().isEmpty() ? refusal : m_link.errorText();
        return Result::Refused;
    }
    ++m_requests;
    m_wireBytes += m_clsModbus.SendSize() + m_clsModbus.RecvSize();
    if (m_bWait)
        m_waiting.run();
    m_cancel->stop();
    // The wait can end without an event only when the program is being closed.
    m_abort = m_abort || m_bWait;
    m_bWait = false;
    return m_lResult;
}

// What was given up by a person says nothing of the line.
void RequestChannel::count(Result result, qint64 milliseconds)
{
    if (result == Result::Refused || m_abort)
        return;
    using Reply = LineStatistics::Reply;
    const Reply reply = result == Result::Failed && m_received.isEmpty() ? Reply::Missing
                        : result != Result::Failed                       ? Reply::Good
                        : m_answered && !m_hasReply                      ? Reply::Refused
                                                                         : Reply::Damaged;
    m_statistics.note(reply, milliseconds, m_clsModbus.SendSize() + m_received.size());
}

bool RequestChannel::mayComeLate(const LateReply& reply) const
{
    return std::any_of(m_late.begin(), m_late.end(), [&](const LateReply& late) { return late.isLike(reply); });
}

// The link throws away what has come by the time of the next request.
bool RequestChannel::waitForLateReply(const LateReply& reply)
{
    qint64 restMs = 0;
    for (const LateReply& late : m_late) {
        if (late.isLike(reply))
            restMs = std::max(restMs, late.restMs(nowMs()));
    }
    m_waitCancelled = false;
    m_isWaitingForLate = true;
    if (restMs > 0)
        pause(static_cast<int>(restMs));
    m_isWaitingForLate = false;
    if (m_abort || m_waitCancelled)
        return false;
    std::erase_if(m_late, [&](const LateReply& late) { return late.isLike(reply); });
    return true;
}

void RequestChannel::cancelWait()
{
    m_link.cancelOpening();
    if (m_bWait && !m_cancel->isActive())
        m_cancel->start(kCancelMs);
    if (!m_isWaitingForLate)
        return;
    m_waitCancelled = true;
    m_waiting.finish();
}

// Bytes that have begun to come are a reply, which is worth its time.
void RequestChannel::giveUpSilent()
{
    m_cancel->stop();
    if (!m_bWait || m_link.hasReceived())
        return;
    m_link.giveUp();
    m_reason = tran("It was cancelled.");
    trace(QStringLiteral("(Error)R:"), {});
    finish(Result::Failed);
}

void RequestChannel::expectLate(const LateReply& reply)
{
    std::erase_if(m_late, [&](const LateReply& late) { return late.isLike(reply); });
    m_late.push_back(reply);
}

void RequestChannel::pause(int milliseconds)
{
    if (m_abort)
        return;
    m_waiting.arm();
    m_pause->start(milliseconds);
    m_waiting.run();
    m_pause->stop();
}

void RequestChannel::abort()
{
    m_abort = true;
    m_link.cancelSend();
    m_waiting.finish();
}

void RequestChannel::onSuccess(const QByteArray& sent, const QByteArray& received)
{
    Q_UNUSED(sent);
    if (!m_bWait)
        return;
    const QByteArray bytes = receivedPart(received);
    m_received = bytes;
    if (mayBeRefusal(bytes)) {
        failWith(QString());
        return;
    }
    m_hasReply = true;
    m_answered = true;
    trace(QStringLiteral("(Scces)R:"), bytes);
    if (isSound(bytes)) {
        finish(m_accepted ? m_accepted() : Result::Success);
        return;
    }
    trace(QStringLiteral("(Error)R:"), bytes);
    finish(Result::Failed);
}

// A late one may be that to an earlier request of the same function: then the wait goes on. The one to an earlier
// sending of the same request says the same.
bool RequestChannel::mayBeRefusal(const QByteArray& received) const
{
    const int slave = m_clsModbus.SlaveAddress();
    const auto isOfAnother = [&](const LateReply& late) {
        return late.slave == slave && late.functionCode == m_functionCode &&
               late.request != m_clsModbus.GetSendMessage() && late.restMs(nowMs()) > 0;
    };
    return modbusframe::isRefusal(received, slave, m_functionCode, m_clsModbus.TransmissionMode() == 1) &&
           std::none_of(m_late.begin(), m_late.end(), isOfAnother);
}

bool RequestChannel::isSound(const QByteArray& received)
{
    QByteArray bytes = received;
    if (!m_clsModbus.SetRecvMessage(bytes, static_cast<qint32>(received.size()))) {
        m_reason = badReply(m_clsModbus.ErrorCode());
        return false;
    }
    // A sound frame that answers another request (a late reply, say) brings no values for this one. The check leaves
    // the binary frame in bytes, in both modes.
    const bool sameFunction = bytes.size() > 1 && static_cast<quint8>(bytes[1]) == m_functionCode;
    if (!sameFunction || bytes.size() != expectedFrameBytes()) {
        m_reason = tran("the reply belongs to another request");
        return false;
    }
    if (!announcesItsBytes(bytes)) {
        m_reason = badReply(clsModbus::kBadReply);
        return false;
    }
    return true;
}

QString RequestChannel::badReply(int code)
{
    if (exceptioncode::contains(code))
        return refusal(code);
    const char* fault = code == clsModbus::kCrcError   ? "CRC wrong"
                        : code == clsModbus::kLrcError ? "LRC wrong"
                                                       : "it does not fit the request";
    return tran("bad reply: %1 (error %2)").arg(tran(fault)).arg(code);
}

QString RequestChannel::refusal(int code)
{
    m_exceptionCode = code;
    return frametexts::refusal(code, m_library.translation());
}

// The replies that say how many bytes of values follow; the length on the line is right by now.
bool RequestChannel::announcesItsBytes(const QByteArray& frame) const
{
    const qsizetype check = m_clsModbus.TransmissionMode() == 1 ? 1 : 2;
    switch (m_functionCode) {
    case functioncode::kReadCoils:
    case functioncode::kReadDiscreteInputs:
    case functioncode::kReadHoldingRegisters:
    case functioncode::kReadInputRegisters:
        return static_cast<quint8>(frame[2]) == frame.size() - 3 - check;
    case functioncode::kReadFloats:
        return static_cast<quint8>(frame[3]) == frame.size() - 4 - check;
    default:
        return true;
    }
}

// Bytes of the binary frame with its check value. In ASCII mode the frame ends with its carriage return: what the line
// picked up behind it does not count.
qsizetype RequestChannel::expectedFrameBytes() const
{
    return modbusframe::checkedBytes(m_clsModbus.RecvSize(), m_clsModbus.TransmissionMode() == 1);
}

void RequestChannel::onError(const QByteArray& sent, const QByteArray& received, const QString& text)
{
    Q_UNUSED(sent);
    if (!m_bWait)
        return;
    m_received = receivedPart(received);
    failWith(text);
}

// Without an exception in what has come, the text says why.
void RequestChannel::failWith(const QString& text)
{
    trace(QStringLiteral("(Error)R:"), m_received);
    QByteArray bytes = m_received;
    m_clsModbus.SetRecvMessage(bytes, static_cast<qint32>(m_received.size()));
    const int code = m_clsModbus.ErrorCode();
    m_answered = exceptioncode::contains(code);
    m_reason = m_answered ? refusal(code) : m_library.tranStr(text);
    finish(Result::Failed);
}

void RequestChannel::finish(Result result)
{
    m_lResult = result;
    m_bWait = false;
    m_waiting.finish();
}

qint64 RequestChannel::nowMs() const
{
    return m_library.context().machine.clock.elapsedMs();
}

QString RequestChannel::lineText() const
{
    return m_link.Speed() + u',' + m_link.Chara();
}

QString RequestChannel::tran(const char* english) const
{
    return m_library.tranStr(QString::fromLatin1(english));
}
