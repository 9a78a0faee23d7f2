#include "TransferEngine.h"

#include "IndexedBytes.h"
#include "ModbusError.h"
#include "clsCfg.h"
#include "clsLibrary.h"
#include "clsLog.h"
#include "uclComm.h"

#include <algorithm>

namespace {

const QString kProgressTitle = QStringLiteral("Sending...");
const QString kProgressText = QStringLiteral("It is forwarding it. Please wait for a while.");
const QString kModelAddress = QStringLiteral("FBC0");
constexpr int kModelStringBytes = 14;
constexpr quint8 kReadCoils = 1;
constexpr quint8 kReadDiscreteInputs = 2;

// Read commands of a comm file.
struct ReadCommand
{
    const char16_t* name;
    const char16_t* traceTag;
    bool (clsModbus::*build)(qint32, qint32);
    bool hexAddress;
    quint8 functionCode;
};

constexpr ReadCommand kReadCommands[] = {
    {u"GetAnalogInput", u"(AlIpt)S:", &clsModbus::ReadAnalogInputData, false, 4},
    {u"GetAnalogSet", u"(AlSet)S:", &clsModbus::ReadAnalogSetValue, false, 3},
    {u"GetDigitalInput", u"(DgIpt)S:", &clsModbus::ReadDigitalInputData, false, kReadDiscreteInputs},
    {u"GetDigitalSet", u"(DgSet)S:", &clsModbus::ReadDigitalSetValue, false, kReadCoils},
    {u"Direct", u"(Dirct)S:", &clsModbus::ReadDirectMemory, true, 66},
};

const ReadCommand* findReadCommand(const QString& name)
{
    for (const ReadCommand& command : kReadCommands) {
        if (name == QStringView(command.name))
            return &command;
    }
    return nullptr;
}

// Without the spare element that the link puts behind the bytes received.
QByteArray receivedPart(const QByteArray& linkBuffer)
{
    return linkBuffer.left(std::max<qsizetype>(linkBuffer.size() - 1, 0));
}

} // namespace

TransferEngine::TransferEngine(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    connect(&m_parts.link, &uclComm::RecieveSuccess, this, &TransferEngine::onSuccess);
    connect(&m_parts.link, &uclComm::RecieveError, this, &TransferEngine::onError);
}

void TransferEngine::getDataFromKX(const std::vector<clsBlock*>* colRefData)
{
    if (m_bBusy)
        return;
    m_bBusy = true;
    m_report = {};
    m_parts.shell.setState(MainState::NoConnection);
    if (!confirmed()) {
        m_bBusy = false;
        return;
    }
    const ImageCollection& images = m_parts.kx.ColAdr();
    m_clsModbus.setSlaveAddress(m_parts.shell.slaveAddress());
    m_clsModbus.setTransmissionMode(m_parts.shell.transmissionMode());
    m_bCancel = false;
    m_abort = false;
    m_bReading = true;
    m_lResult = Result::Success;
    m_parts.progress.open(images.count(), kProgressTitle, kProgressText, true, true);
    Step step = Step::Next;
    for (int k = 1; k <= images.count() && step == Step::Next; ++k) {
        m_parts.progress.setPosition(k);
        step = readImage(images.at(k - 1));
    }
    if (step == Step::Next)
        finishNormally(colRefData);
    else
        finishStopped();
    m_objAdr = nullptr;
    m_bBusy = false;
}

bool TransferEngine::confirmed()
{
    if (!m_parts.settings.m_bViewRecvConf)
        return true;
    const int answer =
        m_parts.questions.showMessage(tran("It reads out from the KX?"), MessageStyle::kYesNoExclamation, QString());
    return answer != MessageResult::kNo;
}

TransferEngine::Step TransferEngine::readImage(clsKXAdr& image)
{
    m_objAdr = &image;
    m_imageComplete = true;
    bool sentAny = false;
    image.clearFilled();
    for (int i = 1; i <= image.MsgMax(); ++i) {
        if (!buildRequest(image.Cmd(i), image.Adr(i), image.Cnt(i)))
            continue;
        sentAny = true;
        if (m_parts.settings.m_bComm) {
            image.setCopy();
            continue;
        }
        if (readEntry(image, i) == Step::Stop)
            return Step::Stop;
    }
    // Only an image whose every entry was answered holds what the controller has.
    if (sentAny && m_imageComplete)
        image.markFilled();
    return Step::Next;
}

TransferEngine::Step TransferEngine::readEntry(clsKXAdr& image, int i)
{
    return sendWithRetries(QStringLiteral("%1: %2 %3").arg(image.Section(), image.Cmd(i), image.Adr(i)));
}

bool TransferEngine::buildRequest(const QString& command, const QString& address, int count)
{
    const ReadCommand* known = findReadCommand(command);
    if (address.isEmpty() || count == 0 || known == nullptr)
        return false;
    const clsLibrary& library = m_parts.kx.library();
    const qint32 number = library.toLong(known->hexAddress ? QStringLiteral("&h") + address : address, 0);
    try {
        if (!(m_clsModbus.*known->build)(number, count))
            return false;
    } catch (const ModbusError& error) {
        m_parts.kx.logError(QStringLiteral("%1 %2,%3: %4").arg(command, address).arg(count).arg(error.description()));
        m_imageComplete = false;
        m_report.givenUp << QStringLiteral("%1: %2 %3").arg(m_objAdr->Section(), command, address);
        m_report.lastFailure = error.description();
        return false;
    }
    m_functionCode = known->functionCode;
    trace(QString::fromUtf16(known->traceTag), m_clsModbus.GetSendMessage());
    return true;
}

TransferEngine::Step TransferEngine::sendWithRetries(const QString& entry)
{
    for (int attempt = 1; attempt <= kRetries + 1; ++attempt) {
        m_bWait = true;
        m_lResult = Result::Success;
        m_wait.arm();
        const QString refusal = m_parts.link.sendMsg(m_clsModbus.GetSendMessage(), m_clsModbus.RecvSize());
        if (!refusal.isEmpty()) {
            m_bWait = false;
            m_lResult = Result::Refused;
            m_reason = m_parts.link.errorText().isEmpty() ? refusal : m_parts.link.errorText();
            m_report.lastFailure = m_reason;
            return Step::Stop;
        }
        ++m_report.requests;
        m_report.wireBytes += m_clsModbus.SendSize() + m_clsModbus.RecvSize();
        if (m_bWait)
            m_wait.run();
        // The wait can end without an event only when the program is being closed.
        m_abort = m_abort || m_bWait;
        m_bWait = false;
        if (m_abort || m_lResult == Result::WrongModel)
            return Step::Stop;
        if (m_lResult == Result::Success)
            return Step::Next;
        noteFailure(entry, attempt);
        if (m_abort)
            return Step::Stop;
        if (m_bCancel) {
            m_lResult = Result::Success;
            return Step::Stop;
        }
    }
    m_imageComplete = false;
    m_report.givenUp << entry;
    return Step::Next;
}

void TransferEngine::noteFailure(const QString& entry, int attempt)
{
    ++m_report.failures;
    m_report.lastFailure = m_reason;
    if (attempt <= kRetries)
        m_parts.progress.setText(QStringLiteral("%1\n%2: %3 (%4/%5)")
                                     .arg(tran(kProgressText), entry, m_reason)
                                     .arg(attempt)
                                     .arg(kRetries + 1));
    Q_EMIT attemptFailed(entry, attempt, kRetries + 1, m_reason);
}

void TransferEngine::onSuccess(const QByteArray& sent, const QByteArray& received)
{
    Q_UNUSED(sent);
    if (!m_bWait)
        return;
    const QByteArray bytes = receivedPart(received);
    m_clsModbus.setSlaveAddress(m_parts.shell.slaveAddress());
    m_clsModbus.setTransmissionMode(m_parts.shell.transmissionMode());
    trace(QStringLiteral("(Scces)R:"), bytes);
    if (acceptReply(bytes)) {
        m_lResult = Result::Success;
        if (m_bReading)
            storeReply();
    } else {
        trace(QStringLiteral("(Error)R:"), bytes);
        m_lResult = Result::Failed;
    }
    m_bWait = false;
    m_wait.finish();
}

bool TransferEngine::acceptReply(const QByteArray& received)
{
    QByteArray bytes = received;
    if (!m_clsModbus.SetRecvMessage(bytes, static_cast<qint32>(received.size()))) {
        m_reason = tran("bad reply (error %1)").arg(m_clsModbus.ErrorCode());
        return false;
    }
    // A sound frame that answers another request (a late reply, say) brings no values for this one. The check leaves
    // the binary frame in bytes, in both modes.
    const bool sameFunction = bytes.size() > 1 && static_cast<quint8>(bytes[1]) == m_functionCode;
    if (!sameFunction || received.size() != m_clsModbus.RecvSize()) {
        m_reason = tran("the reply belongs to another request");
        return false;
    }
    return true;
}

void TransferEngine::storeReply()
{
    if (m_objAdr == nullptr)
        return;
    if (m_objAdr->m_bModbus) {
        // A reply with bits leaves the register values of an earlier read as they are: they are not this entry's.
        const bool isBits = m_functionCode == kReadCoils || m_functionCode == kReadDiscreteInputs;
        m_objAdr->setInteger(QString(), isBits ? m_clsModbus.DigitalVal(1) : m_clsModbus.AlalogVal(1));
        return;
    }
    m_objAdr->setData(m_clsModbus.DigitalVals());
    if (m_objAdr->StartAddress() != kModelAddress)
        return;
    m_report.answeredModel = m_objAdr->getString(kModelAddress, kModelStringBytes, QString());
    m_parts.shell.setConnectedModel(m_report.answeredModel);
    if (m_parts.shell.modelPanel() != m_report.answeredModel && !m_parts.settings.m_bComm)
        m_lResult = Result::WrongModel;
}

void TransferEngine::onError(const QByteArray& sent, const QByteArray& received, const QString& text)
{
    Q_UNUSED(sent);
    if (!m_bWait)
        return;
    QByteArray bytes = receivedPart(received);
    trace(QStringLiteral("(Error)R:"), bytes);
    const auto count = static_cast<qint32>(bytes.size());
    m_clsModbus.SetRecvMessage(bytes, count);
    const int code = m_clsModbus.ErrorCode();
    m_reason = code >= 1 && code <= 255 ? tran("the controller refused (exception %1)").arg(code) : tran(text);
    m_lResult = Result::Failed;
    m_bWait = false;
    m_wait.finish();
}

void TransferEngine::ProgCancel(int Index)
{
    Q_UNUSED(Index);
    m_bCancel = true;
}

void TransferEngine::abort()
{
    m_abort = true;
    m_wait.finish();
}

void TransferEngine::finishNormally(const std::vector<clsBlock*>* colRefData)
{
    m_parts.kx.refreshSpread(true, colRefData);
    m_parts.progress.close();
    m_report.outcome = ReadOutcome::Complete;
    m_parts.shell.setState(MainState::UpToDate);
}

void TransferEngine::finishStopped()
{
    m_parts.shell.setState(MainState::Confirmed);
    m_parts.progress.close();
    if (m_abort) {
        m_report.outcome = ReadOutcome::Aborted;
        return;
    }
    switch (m_lResult) {
    case Result::WrongModel:
        m_report.outcome = ReadOutcome::WrongModel;
        m_parts.questions.showMessage(tran("Model number is different."), MessageStyle::kCritical, QString());
        m_parts.shell.showCommSetting();
        break;
    case Result::Success:
        m_report.outcome = ReadOutcome::Cancelled;
        m_parts.questions.showMessage(tran("It was cancelled."), MessageStyle::kExclamation, QString());
        break;
    case Result::Refused:
    case Result::Failed:
        m_report.outcome = ReadOutcome::LinkRefused;
        m_parts.questions.showMessage(tran("Reception error occurred.") +
                                          QStringLiteral("[%1]").arg(static_cast<int>(m_lResult)),
                                      MessageStyle::kExclamation, QString());
        break;
    }
}

QString TransferEngine::tran(const QString& english) const
{
    return m_parts.kx.library().tranStr(english);
}

QString TransferEngine::tran(const char* english) const
{
    return tran(QString::fromLatin1(english));
}

void TransferEngine::trace(const QString& tag, const QByteArray& bytes)
{
    m_parts.traceLog.LogWrite(tag + m_parts.kx.library().HexString(bytes));
}
