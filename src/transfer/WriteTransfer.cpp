#include "WriteTransfer.h"

#include "FunctionCodes.h"
#include "ItemStore.h"
#include "ModbusError.h"
#include "Numbers.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const char* const kProgressTitle = "Sending...";
const char* const kProgressText = "It is forwarding it. Please wait for a while.";
const QString kInputRange = QStringLiteral("PQRNO");
const QString kModelCode = QStringLiteral("MQCODE");
const QString kLiteral = QStringLiteral("&h");
constexpr int kEditSent = 3;

QString entryName(const clsKXAdr& image, int i)
{
    return QStringLiteral("%1: %2 %3").arg(image.Section(), image.WCmd(i), image.WAdr(i));
}

bool isLiteral(const QString& tag)
{
    return tag.startsWith(kLiteral);
}

// The same value, however it is written.
bool isSameValue(const QString& sent, const QString& kept)
{
    const auto left = platform::parseSingle(sent);
    const auto right = platform::parseSingle(kept);
    return sent == kept || (left && right && *left == *right);
}

} // namespace

void WriteTransfer::start()
{
    m_report = {};
    m_stored.clear();
    m_blocks.clear();
    m_bCancel = false;
}

bool WriteTransfer::isReady()
{
    if (m_parts.shell.state() == MainState::UpToDate)
        return true;
    m_report.outcome = WriteOutcome::NotRead;
    m_parts.questions.showMessage(tran("Please acquire the up-to-date data from the equipment."),
                                  MessageStyle::kCritical);
    return false;
}

bool WriteTransfer::writeOne(const QString& sTag)
{
    start();
    if (!isReady())
        return false;
    clsData* item = m_parts.kx.getDataByTag(sTag);
    Images colWrite;
    if (item == nullptr || m_parts.kx.ColAdr().find(item->WSection()) == nullptr) {
        m_report.outcome = WriteOutcome::NothingToDo;
        return false;
    }
    if (!storeItem(*item, colWrite))
        m_report.skipped << item->Key();
    return finish(confirmed() && sendData({m_parts.kx.ColAdr().find(item->WSection())}, true));
}

bool WriteTransfer::writeBlock(const clsBlock& block)
{
    start();
    if (!isReady())
        return false;
    Images colWrite;
    storeBlock(block, colWrite);
    for (int n = 0; !block.getRelayBlock(n).isEmpty(); ++n) {
        const clsLibrary& library = m_parts.kx.library();
        const int number = library.toLong(block.getRelayBlock(n), 0);
        if (const clsBlock* relay = m_parts.kx.getBlockByNo(number))
            storeBlock(*relay, colWrite);
        else
            m_parts.kx.logError(QStringLiteral("リレーブロックが見つからない[%1]").arg(number));
    }
    return finish(confirmed() && sendData(colWrite, false));
}

// The input range goes first and on its own: the controller takes the other values in its terms.
bool WriteTransfer::writeAll()
{
    start();
    if (!isReady())
        return false;
    Images colWrite;
    for (const clsBlock* block : m_parts.kx.BlockCol())
        storeBlock(*block, colWrite);
    if (!confirmed())
        return finish(false);
    clsData* range = m_parts.kx.getDataByTag(kInputRange);
    clsKXAdr* image = range == nullptr ? nullptr : m_parts.kx.ColAdr().find(range->WSection());
    if (image != nullptr) {
        storeInImage(*range, *image);
        if (!sendData({image}, true))
            return finish(false);
    }
    return finish(sendData(colWrite, false));
}

void WriteTransfer::storeBlock(const clsBlock& block, Images& colWrite)
{
    m_blocks.push_back(m_parts.kx.getBlockByNo(block.m_lNo));
    for (clsData* item : block.Tags()) {
        if (m_parts.kx.ColAdr().find(item->WSection()) == nullptr)
            continue;
        const bool isWritten = item->MType() != ItemType::String;
        if (!storeItem(*item, colWrite) && isWritten)
            m_report.skipped << item->Key();
    }
    if (!m_report.skipped.isEmpty())
        m_parts.kx.logError(QStringLiteral("not written, because these are no values of the controller: ") +
                            m_report.skipped.join(QStringLiteral(", ")));
}

bool WriteTransfer::storeItem(clsData& item, Images& colWrite)
{
    clsKXAdr* image = m_parts.kx.ColAdr().find(item.WSection());
    if (std::find(colWrite.begin(), colWrite.end(), image) == colWrite.end())
        colWrite.push_back(image);
    if (!item.isKnown() || !storeInImage(item, *image))
        return false;
    m_stored.push_back({&item, item.Data(), item.Edit});
    item.Edit = kEditSent;
    return true;
}

bool WriteTransfer::confirmed()
{
    if (!m_parts.settings.m_bViewSendConf ||
        m_parts.questions.showMessage(tran("Write to the KX?"), MessageStyle::kYesNoExclamation) != MessageResult::kNo)
        return true;
    m_report.outcome = WriteOutcome::Declined;
    return false;
}

// What did not go out to its end stays marked as changed.
bool WriteTransfer::finish(bool sent)
{
    if (m_report.outcome != WriteOutcome::Complete) {
        for (const Stored& stored : m_stored)
            stored.item->Edit = stored.edit;
    }
    return sent;
}

bool WriteTransfer::isModelRight()
{
    const clsData* code = m_parts.kx.getDataByTag(kModelCode);
    if (m_parts.settings.m_bComm || code == nullptr || code->VData() == m_parts.shell.modelPanel())
        return true;
    m_report.outcome = WriteOutcome::WrongModel;
    m_parts.questions.showMessage(tran("Model number is different."), MessageStyle::kCritical);
    return false;
}

// True when the entries were walked to their end.
bool WriteTransfer::sendData(const Images& colWrite, bool bSingle)
{
    if (!isModelRight())
        return false;
    m_parts.channel.begin();
    m_parts.progress.open(2 * static_cast<int>(colWrite.size()), QString::fromLatin1(kProgressTitle),
                          QString::fromLatin1(kProgressText), true, true);
    int position = 0;
    bool walked = sendPass(colWrite, 0, bSingle, position);
    if (walked && !m_parts.settings.m_bComm) {
        if (bSingle) {
            m_parts.channel.pause(kPauseMs);
            m_report.pausesMs += kPauseMs;
        }
        walked = sendPass(colWrite, 1, bSingle, position);
    }
    m_report.requests += m_parts.channel.requests();
    m_report.wireBytes += m_parts.channel.wireBytes();
    m_parts.progress.close();
    m_report.outcome = walked                        ? WriteOutcome::Complete
                       : m_parts.channel.isAborted() ? WriteOutcome::Aborted
                                                     : WriteOutcome::Cancelled;
    m_parts.shell.setState(walked ? MainState::UpToDate : MainState::Confirmed);
    return walked;
}

bool WriteTransfer::sendPass(const Images& colWrite, int pass, bool bSingle, int& position)
{
    for (clsKXAdr* image : colWrite) {
        m_parts.progress.setPosition(++position);
        if (!image->isFilled()) {
            if (pass == 0)
                m_report.failed << QStringLiteral("%1: %2").arg(image->Section(), tran("not read, so not written"));
            continue;
        }
        for (int i = 1; i <= image->WMsgMax(); ++i) {
            if (m_parts.channel.isAborted())
                return false;
            if (!sendEntry(*image, i, pass, bSingle))
                continue;
            if (m_bCancel || m_parts.channel.isAborted())
                return false;
        }
    }
    return !m_bCancel && !m_parts.channel.isAborted();
}

// True when a request went out.
bool WriteTransfer::sendEntry(clsKXAdr& image, int i, int pass, bool bSingle)
{
    if (image.WAdr(i).isEmpty() || image.WCmd(i).isEmpty())
        return false;
    const bool isDirect = image.WCmd(i) == u"Direct";
    if (isDirect != (pass == 0))
        return false;
    try {
        if (!(isDirect ? buildDirect(image, i) : buildSet(image, i, bSingle)))
            return false;
    } catch (const ModbusError& error) {
        m_report.failed << entryName(image, i) + QStringLiteral(": ") + error.description();
        m_parts.kx.logError(m_report.failed.last());
        return false;
    }
    if (m_parts.settings.m_bComm) {
        m_parts.channel.traceNow();
        image.setCopy();
        return true;
    }
    send(image, i);
    return true;
}

bool WriteTransfer::buildDirect(clsKXAdr& image, int i)
{
    RequestChannel& channel = m_parts.channel;
    channel.modbus().setDigitalVals(image.getWriteData(false));
    const qint32 address = m_parts.kx.library().toLong(kLiteral + image.WAdr(i), 0);
    if (!channel.modbus().WriteDirectMemory(address, image.WCnt(i)))
        return false;
    m_functionCode = functioncode::kMemory;
    channel.trace(QStringLiteral("Original :%1:").arg(image.StartAddress()), image.getOrgData());
    channel.trace(QStringLiteral("WriteData:%1:").arg(image.StartAddress()), image.getWriteData(true).bytes);
    channel.traceRequest(QStringLiteral("(Dirct)S:"));
    return true;
}

bool WriteTransfer::buildSet(const clsKXAdr& image, int i, bool bSingle)
{
    const clsLibrary& library = m_parts.kx.library();
    const QString tag = image.WTag(i);
    const bool isAnalog = image.WCmd(i) == u"SetAnalog";
    if (!isAnalog && image.WCmd(i) != u"SetDigital")
        return false;
    if (isLiteral(tag) && isAnalog && !bSingle)
        return false;
    const clsData* item = isLiteral(tag) ? nullptr : m_parts.kx.getDataByTag(tag);
    if (!isLiteral(tag) && (item == nullptr || !item->isKnown() || item->Data().isEmpty())) {
        m_parts.kx.logError(QStringLiteral("%1: %2 has no value").arg(entryName(image, i), tag));
        return false;
    }
    const qint16 value = library.toInteger(item == nullptr ? tag : item->Data(), 0);
    const qint32 reference = library.toLong(image.WAdr(i), 0);
    clsModbus& modbus = m_parts.channel.modbus();
    m_functionCode = isAnalog ? functioncode::kWriteRegister : functioncode::kWriteCoil;
    if (!(isAnalog ? modbus.WriteAnalogSetValue(reference, value) : modbus.WriteDigitalSetValue(reference, value != 0)))
        return false;
    if (isAnalog)
        m_parts.channel.traceRequest(QStringLiteral("(SetAl)S:"));
    return true;
}

void WriteTransfer::send(clsKXAdr& image, int i)
{
    const auto result = m_parts.channel.exchange(m_functionCode);
    if (m_parts.channel.isAborted())
        return;
    if (result == RequestChannel::Result::Success) {
        if (m_functionCode == functioncode::kMemory)
            image.setCopy();
        return;
    }
    m_report.failed << QStringLiteral("%1: %2").arg(entryName(image, i), m_parts.channel.reason());
    m_parts.kx.logError(QStringLiteral("not written: ") + m_report.failed.last());
}

void WriteTransfer::compareWithReadBack()
{
    for (const Stored& stored : m_stored) {
        const clsData& item = *stored.item;
        if (item.isKnown() && !isSameValue(stored.sent, item.Data()))
            m_report.notAccepted.append({item.Key(), stored.sent, item.Data()});
    }
    for (const NotAccepted& parameter : m_report.notAccepted)
        m_parts.kx.logError(
            QStringLiteral("not accepted: %1, sent %2, kept %3").arg(parameter.tag, parameter.sent, parameter.kept));
}

QString WriteTransfer::tran(const char* english) const
{
    return m_parts.kx.library().tranStr(QString::fromLatin1(english));
}
