#include "ReadTransfer.h"

#include "ModbusError.h"
#include "ModelCodes.h"
#include "ProtocolNumbers.h"
#include "ReadCommands.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int kSilentSendings = 2; // after which the line is called silent

QString readEntryName(const clsKXAdr& image, int i)
{
    return TransferParts::entryName(image, image.Cmd(i), image.Adr(i));
}

} // namespace

ReadTransfer::ReadTransfer(const TransferParts& parts, AttemptFailed attemptFailed)
    : m_parts(parts), m_attemptFailed(std::move(attemptFailed))
{}

void ReadTransfer::run(const std::vector<clsBlock*>* colRefData, Purpose purpose)
{
    m_report = {};
    m_answered = 0;
    m_isSilent = true;
    m_purpose = purpose;
    m_parts.controller.setState(MainState::NoConnection);
    if (!m_parts.confirmed(m_parts.settings.m_bViewRecvConf, "It reads out from the KX?"))
        return;
    m_bCancel = false;
    m_lResult = Result::Success;
    const std::vector<clsKXAdr*> images = m_parts.kx.ColAdr().all();
    m_parts.begin(static_cast<int>(images.size()));
    const Step end = readImages(images);
    m_report.requests = m_parts.channel.requests();
    m_report.wireBytes = m_parts.channel.wireBytes();
    if (end == Step::Stop)
        finishStopped();
    else if (m_report.requests > 0 && m_answered == 0)
        finishUnanswered();
    else
        finishNormally(colRefData);
}

ReadTransfer::Step ReadTransfer::readImages(const std::vector<clsKXAdr*>& images)
{
    int position = 0;
    for (clsKXAdr* image : images) {
        m_parts.progress.setPosition(++position);
        if (readImage(*image) == Step::Stop)
            return Step::Stop;
    }
    return Step::Next;
}

ReadTransfer::Look ReadTransfer::look(const std::vector<clsKXAdr*>& images)
{
    ReadReport shown = std::exchange(m_report, {});
    std::vector<clsKXAdr> before;
    for (clsKXAdr* image : images) {
        before.push_back(*image);
        image->clearFilled();
    }
    m_answered = 0;
    m_isSilent = true;
    m_bCancel = false;
    m_lResult = Result::Success;
    m_parts.begin(static_cast<int>(images.size()));
    const Step end = readImages(images);
    m_parts.progress.close();
    Look look;
    for (size_t i = 0; i < images.size(); ++i) {
        if (!images[i]->isUnread())
            continue;
        look.unread << images[i]->Section();
        *images[i] = before[i];
    }
    m_report.requests = m_parts.channel.requests();
    m_report.wireBytes = m_parts.channel.wireBytes();
    m_report.outcome = end == Step::Stop                          ? stoppedBy()
                       : m_report.requests > 0 && m_answered == 0 ? ReadOutcome::NoResponse
                                                                  : ReadOutcome::Complete;
    look.report = std::exchange(m_report, std::move(shown));
    return look;
}

ReadOutcome ReadTransfer::stoppedBy() const
{
    if (m_parts.channel.isAborted())
        return ReadOutcome::Aborted;
    return m_lResult == Result::WrongModel ? ReadOutcome::WrongModel
           : m_lResult == Result::Success  ? ReadOutcome::Cancelled
                                           : ReadOutcome::LinkRefused;
}

ReadTransfer::Step ReadTransfer::readImage(clsKXAdr& image)
{
    m_imageComplete = true;
    bool sentAny = false;
    image.clearFilled();
    for (int i = 1; i <= image.MsgMax(); ++i) {
        if (!buildRequest(image, i))
            continue;
        sentAny = true;
        if (m_parts.settings.m_bComm) {
            m_parts.channel.traceNow();
            image.setCopy();
            continue;
        }
        if (sendWithRetries(image, readEntryName(image, i)) == Step::Stop)
            return Step::Stop;
    }
    // Only an image whose every entry was answered holds what the controller has.
    if (sentAny && m_imageComplete)
        image.markFilled();
    return Step::Next;
}

bool ReadTransfer::buildRequest(const clsKXAdr& image, int i)
{
    const QString address = image.Adr(i);
    const ReadCommand* known = findReadCommand(image.Cmd(i));
    if (address.isEmpty() || image.Cnt(i) == 0 || known == nullptr)
        return false;
    const clsLibrary& library = m_parts.kx.library();
    const qint32 number = library.toLong(known->hexAddress ? QStringLiteral("&h") + address : address, 0);
    try {
        if (!(m_parts.channel.modbus().*known->build)(number, image.Cnt(i)))
            return false;
    } catch (const ModbusError& error) {
        m_parts.kx.logError(readEntryName(image, i) + QStringLiteral(": ") + error.description());
        m_imageComplete = false;
        m_report.givenUp << readEntryName(image, i);
        m_report.lastFailure = error.description();
        return false;
    }
    m_functionCode = known->functionCode;
    m_parts.channel.traceRequest(QString::fromUtf16(known->traceTag));
    return true;
}

ReadTransfer::Step ReadTransfer::sendWithRetries(clsKXAdr& image, const QString& entry)
{
    for (int attempt = 1; attempt <= kRetries + 1; ++attempt) {
        m_lResult = m_parts.channel.exchange(m_functionCode, [&] { return storeReply(image); });
        if (m_lResult == Result::Refused)
            m_report.lastFailure = m_parts.channel.reason();
        if (m_parts.channel.isAborted() || m_lResult == Result::WrongModel || m_lResult == Result::Refused)
            return Step::Stop;
        if (m_lResult == Result::Success) {
            ++m_answered;
            return Step::Next;
        }
        noteFailure(entry, attempt);
        if (m_parts.channel.isAborted())
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

void ReadTransfer::noteFailure(const QString& entry, int attempt)
{
    const QString reason = m_parts.channel.reason();
    ++m_report.failures;
    m_isSilent = m_isSilent && m_parts.channel.received().isEmpty();
    m_report.lastFailure = reason;
    if (attempt <= kRetries)
        m_parts.progress.setText(
            QStringLiteral("%1\n%2: %3 (%4/%5)").arg(progressText(), entry, reason).arg(attempt).arg(kRetries + 1));
    m_attemptFailed(entry, attempt, kRetries + 1, reason);
}

// A line without a sign of life is told early, not after all repetitions of all requests.
QString ReadTransfer::progressText() const
{
    if (!m_isSilent || m_answered > 0 || m_report.failures < kSilentSendings)
        return m_parts.tran(TransferParts::kProgressText);
    return m_parts.tran("No answer from slave %1 at %2. Check slave address, speed, data format and cable.")
        .arg(m_parts.controller.slaveAddress())
        .arg(m_parts.channel.lineText());
}

RequestChannel::Result ReadTransfer::storeReply(clsKXAdr& image)
{
    clsModbus& modbus = m_parts.channel.modbus();
    if (image.m_bModbus) {
        // A reply with bits leaves the register values of an earlier read as they are: they are not this entry's.
        const bool isBits =
            m_functionCode == functioncode::kReadCoils || m_functionCode == functioncode::kReadDiscreteInputs;
        image.setInteger(QString(), static_cast<qint16>(isBits ? modbus.DigitalVal(1) : modbus.AlalogVal(1)));
        return Result::Success;
    }
    image.setData(modbus.DigitalVals());
    if (image.StartAddress() != modelcodes::memoryText(modelcodes::kModelAddress))
        return Result::Success;
    m_report.answeredModel = image.getString(image.StartAddress(), modelcodes::kModelStringLength, QString());
    const bool isOther = m_parts.controller.model() != m_report.answeredModel && !m_parts.settings.m_bComm;
    if (!isOther)
        m_modelSeenAt = m_parts.channel.opening();
    return isOther ? Result::WrongModel : Result::Success;
}

// Off-line nothing was read back: what was to be written stays as it is.
void ReadTransfer::finishNormally(const std::vector<clsBlock*>* colRefData)
{
    m_report.refreshed = m_purpose == Purpose::Show || !m_parts.settings.m_bComm;
    if (m_report.refreshed)
        m_parts.kx.refreshSpread(true, colRefData);
    m_parts.progress.close();
    m_report.outcome = ReadOutcome::Complete;
    m_parts.controller.setState(MainState::UpToDate);
    m_report.unreadBlocks = unreadBlocks();
    if (!m_report.givenUp.isEmpty())
        m_parts.notify(m_parts.tran("These blocks were not read: %1").arg(m_report.unreadBlocks.join(u", ")),
                       MessageStyle::kExclamation);
}

// The values stay as they were.
void ReadTransfer::finishUnanswered()
{
    m_report.outcome = ReadOutcome::NoResponse;
    m_parts.controller.setState(MainState::Confirmed);
    m_parts.progress.close();
    m_parts.notifyNoResponse(m_report.lastFailure);
}

// By name, as the grid titles them; a section that no block shows by its own name.
QStringList ReadTransfer::unreadBlocks() const
{
    QStringList names;
    const ImageCollection& images = m_parts.kx.ColAdr();
    for (int i = 0; i < images.count(); ++i) {
        const clsKXAdr& image = images.at(i);
        if (!image.isUnread())
            continue;
        QStringList blocks;
        for (const clsBlock* block : m_parts.kx.BlockCol()) {
            const auto& items = block->Tags();
            if (std::any_of(items.begin(), items.end(),
                            [&](auto* item) { return item->RSection() == image.Section(); }))
                blocks << m_parts.kx.library().tranStr(block->m_sName);
        }
        names << (blocks.isEmpty() ? QStringList(image.Section()) : blocks);
    }
    names.removeDuplicates();
    return names;
}

void ReadTransfer::finishStopped()
{
    m_parts.controller.setState(MainState::Confirmed);
    m_parts.progress.close();
    m_report.outcome = stoppedBy();
    if (m_report.outcome == ReadOutcome::WrongModel)
        m_parts.notifyWrongModel(m_report.answeredModel);
    else if (m_report.outcome == ReadOutcome::Cancelled)
        m_parts.notify(m_parts.tran("It was cancelled."), MessageStyle::kExclamation);
    else if (m_report.outcome == ReadOutcome::LinkRefused)
        m_parts.notify(m_parts.tran("Reception error occurred.") +
                           QStringLiteral("[%1]").arg(static_cast<int>(m_lResult)),
                       MessageStyle::kExclamation);
}
