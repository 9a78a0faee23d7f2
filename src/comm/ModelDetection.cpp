#include "ModelDetection.h"

#include "ModbusError.h"
#include "ModelCodes.h"
#include "clsLibrary.h"

namespace {

const QString kHexPrefix = QStringLiteral("&h");

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
    : QObject(parent), m_library(library), m_commandLine(commandLine), m_channel(link, library, noLog()),
      m_question(m_channel, library)
{}

void ModelDetection::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_channel.setTraceLog(objTrcLog);
}

Detection ModelDetection::detect(int lSlaveNo, int mode, const QStringList& codes)
{
    if (m_busy)
        return {};
    m_busy = true;
    m_channel.allow();
    setTransmissionMode(mode);
    bool answered = getModelFromKX(lSlaveNo, kHexPrefix + modelcodes::memoryText(modelcodes::kModelAddress));
    const bool elsewhere = !modelcodes::isOfFamily(m_modelString) && m_modelString != modelcodes::kNothing;
    if (elsewhere && !m_channel.isAborted())
        answered = getModelFromKX(lSlaveNo, kHexPrefix + modelcodes::memoryText(modelcodes::kOtherModelAddress));
    m_busy = false;
    if (m_channel.isAborted())
        return {};
    if (!answered)
        return {DetectionResult::NoAnswer, -1};
    const modelcodes::Selection selection = modelcodes::select(m_modelString, codes);
    return {resultOf(selection.match), selection.position};
}

bool ModelDetection::getModelFromKX(int lSlaveNo, const QString& sAdr)
{
    if (!m_busy)
        m_channel.allow();
    m_failure.clear();
    if (!buildRequest(lSlaveNo, sAdr))
        return false;
    Q_EMIT asking(sAdr.mid(kHexPrefix.size()));
    const auto result = m_question.exchange();
    if (result == RequestChannel::Result::Success && !m_channel.isAborted())
        m_modelString = overridden(m_question.answer());
    if (result == RequestChannel::Result::Success || m_channel.isAborted())
        return !m_channel.isAborted();
    m_failure = m_channel.reason();
    if (!m_channel.hasReply())
        m_modelString = modelcodes::kNothing;
    return false;
}

bool ModelDetection::buildRequest(int lSlaveNo, const QString& sAdr)
{
    try {
        m_question.prepare(lSlaveNo, m_mode, m_library.toLong(sAdr, 0));
    } catch (const ModbusError& error) {
        m_errorLog.get().LogWrite(
            QStringLiteral("[KXCommSetFormError]%1: %2").arg(error.source(), error.description()));
        m_failure = error.description();
        return false;
    }
    return true;
}

void ModelDetection::stop()
{
    m_channel.abort();
}

// The case counts: device paths such as "/dev/ttyUSB0" are no switches.
QString ModelDetection::overridden(const QString& answered) const
{
    if (!m_commandLine.contains(QStringLiteral("/D")))
        return answered;
    const QString wanted = m_library.GetCommand(m_commandLine, QStringLiteral("/M:"), true).trimmed();
    return wanted.isEmpty() ? answered : wanted;
}
