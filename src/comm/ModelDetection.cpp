#include "ModelDetection.h"

#include "ModbusError.h"
#include "ModelCodes.h"
#include "ProtocolNumbers.h"
#include "clsKXAdr.h"
#include "clsLibrary.h"
#include "clsLog.h"
#include "uclComm.h"

#include <algorithm>

namespace {

const QString kHexPrefix = QStringLiteral("&h");
const QString kFamily = QStringLiteral("KX");

// Without the spare element that the link puts behind the bytes received.
QByteArray receivedPart(const QByteArray& linkBuffer)
{
    return linkBuffer.left(std::max<qsizetype>(linkBuffer.size() - 1, 0));
}

DetectionResult resultOf(modelcodes::Match match)
{
    switch (match) {
    case modelcodes::Match::Found:
        return DetectionResult::Found;
    case modelcodes::Match::NoAnswer:
        return DetectionResult::NoAnswer;
    case modelcodes::Match::NotFound:
        break;
    }
    return DetectionResult::NotFound;
}

} // namespace

ModelDetection::ModelDetection(uclComm& link, const clsLibrary& library, const QString& commandLine, QObject* parent)
    : QObject(parent), m_link(link), m_library(library), m_commandLine(commandLine)
{
    connect(&m_link, &uclComm::RecieveSuccess, this, &ModelDetection::onSuccess);
    connect(&m_link, &uclComm::RecieveError, this, &ModelDetection::onError);
}

void ModelDetection::Logs(clsLog* objErrLog, clsLog* objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

Detection ModelDetection::detect(int lSlaveNo, int mode, const QStringList& codes)
{
    if (m_busy)
        return {};
    m_busy = true;
    m_stopped = false;
    setTransmissionMode(mode);
    bool answered = getModelFromKX(lSlaveNo, kHexPrefix + modelcodes::memoryText(modelcodes::kModelAddress));
    const bool elsewhere = !m_modelString.startsWith(kFamily) && m_modelString != modelcodes::kNothing;
    if (elsewhere && !m_stopped)
        answered = getModelFromKX(lSlaveNo, kHexPrefix + modelcodes::memoryText(modelcodes::kOtherModelAddress));
    m_busy = false;
    if (m_stopped)
        return {};
    if (!answered)
        return {DetectionResult::NoAnswer, -1};
    const modelcodes::Selection selection = modelcodes::select(m_modelString, codes);
    return {resultOf(selection.match), selection.position};
}

bool ModelDetection::getModelFromKX(int lSlaveNo, const QString& sAdr)
{
    if (!m_busy)
        m_stopped = false;
    m_failed = false;
    m_failure.clear();
    if (!buildRequest(lSlaveNo, sAdr))
        return false;
    Q_EMIT asking(sAdr.mid(kHexPrefix.size()));
    m_wait.arm();
    m_waiting = true;
    const QString refusal = m_link.sendMsg(m_clsModbus.GetSendMessage(), m_clsModbus.RecvSize());
    if (!refusal.isEmpty() && !m_stopped) {
        m_waiting = false;
        m_modelString = modelcodes::kNothing;
        fail(m_link.errorText().isEmpty() ? refusal : m_link.errorText());
    }
    waitForAnswer();
    return !m_failed && !m_stopped;
}

bool ModelDetection::buildRequest(int lSlaveNo, const QString& sAdr)
{
    try {
        m_clsModbus.setSlaveAddress(lSlaveNo);
        m_clsModbus.ReadDirectMemory(m_library.toLong(sAdr, 0), modelcodes::kModelStringLength);
    } catch (const ModbusError& error) {
        if (m_errorLog != nullptr)
            m_errorLog->LogWrite(QStringLiteral("[KXCommSetFormError]%1: %2").arg(error.source(), error.description()));
        fail(error.description());
        return false;
    }
    trace(QStringLiteral("(Dirct)S:"), m_clsModbus.GetSendMessage());
    return true;
}

void ModelDetection::waitForAnswer()
{
    if (m_waiting)
        m_wait.run();
    // The wait ends without an event when it was stopped, and when the whole program is ending.
    m_stopped = m_stopped || m_waiting;
    m_waiting = false;
}

void ModelDetection::stop()
{
    m_stopped = true;
    m_link.cancelSend();
    m_wait.finish();
}

void ModelDetection::onSuccess(const QByteArray& sent, const QByteArray& received)
{
    Q_UNUSED(sent);
    if (!m_waiting)
        return;
    const QByteArray bytes = receivedPart(received);
    trace(QStringLiteral("(Scces)R:"), bytes);
    if (!accept(bytes)) {
        trace(QStringLiteral("(Error)R:"), bytes);
        endWait();
        return;
    }
    clsKXAdr holder;
    holder.setLib(&m_library);
    holder.setData(m_clsModbus.DigitalVals());
    m_modelString = overridden(holder.getString(QString(), modelcodes::kModelStringLength, QString()));
    endWait();
}

bool ModelDetection::accept(const QByteArray& received)
{
    QByteArray bytes = received;
    if (!m_clsModbus.SetRecvMessage(bytes, static_cast<qint32>(received.size()))) {
        fail(QStringLiteral("bad reply (error %1)").arg(m_clsModbus.ErrorCode()));
        return false;
    }
    // A sound frame of another function is a late reply to somebody else's request.
    if (bytes.size() < 2 || bytes[1] != static_cast<char>(functioncode::kMemory)) {
        fail(QStringLiteral("the reply belongs to another request"));
        return false;
    }
    return true;
}

void ModelDetection::onError(const QByteArray& sent, const QByteArray& received, const QString& text)
{
    Q_UNUSED(sent);
    if (!m_waiting)
        return;
    QByteArray bytes = receivedPart(received);
    trace(QStringLiteral("(Error)R:"), bytes);
    const auto count = static_cast<qint32>(bytes.size());
    m_clsModbus.SetRecvMessage(bytes, count);
    const int code = m_clsModbus.ErrorCode();
    fail(exceptioncode::contains(code) ? QStringLiteral("the controller refused (exception %1)").arg(code) : text);
    m_modelString = modelcodes::kNothing;
    endWait();
}

void ModelDetection::fail(const QString& reason)
{
    m_failed = true;
    m_failure = reason;
}

void ModelDetection::endWait()
{
    m_waiting = false;
    m_wait.finish();
}

// The case counts: device paths such as "/dev/ttyUSB0" are no switches.
QString ModelDetection::overridden(const QString& answered) const
{
    if (!m_commandLine.contains(QStringLiteral("/D")))
        return answered;
    const QString wanted = m_library.GetCommand(m_commandLine, QStringLiteral("/M:"), true).trimmed();
    return wanted.isEmpty() ? answered : wanted;
}

void ModelDetection::trace(const QString& tag, const QByteArray& bytes)
{
    if (m_traceLog != nullptr)
        m_traceLog->LogWrite(tag + m_library.HexString(bytes));
}
