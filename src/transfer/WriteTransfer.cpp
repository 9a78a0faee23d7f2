#include "WriteTransfer.h"

#include "HeldValue.h"
#include "ItemLimits.h"
#include "ItemStore.h"
#include "ModbusError.h"
#include "Numbers.h"
#include "ProtocolNumbers.h"
#include "Tags.h"
#include "WrittenItems.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const char* const kProgressTitle = "Sending...";
const char* const kProgressText = "It is forwarding it. Please wait for a while.";
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
} // namespace

void WriteTransfer::start()
{
    m_report = {};
    m_chosen.clear();
    m_chosenTags.clear();
    m_blocks.clear();
    m_isOfAll = false;
    m_bCancel = false;
    resetImages();
}

void WriteTransfer::resetImages()
{
    const ImageCollection& images = m_parts.kx.ColAdr();
    for (int i = 0; i < images.count(); ++i)
        images.at(i).resetWrite();
}

bool WriteTransfer::isReady()
{
    if (m_parts.controller.state() == MainState::UpToDate)
        return true;
    m_report.outcome = WriteOutcome::NotRead;
    m_parts.questions.showMessage(tran("Please acquire the up-to-date data from the equipment."),
                                  MessageStyle::kCritical);
    return false;
}

bool WriteTransfer::mayWrite()
{
    return confirmed() && isModelRight();
}

bool WriteTransfer::writeItems(const QStringList& tags)
{
    start();
    if (!isReady())
        return false;
    std::vector<clsData*> items;
    for (const QString& tag : tags) {
        clsData* item = m_parts.kx.getDataByTag(tag);
        if (item != nullptr && m_parts.kx.ColAdr().find(item->WSection()) != nullptr)
            items.push_back(item);
    }
    if (items.empty()) {
        m_report.outcome = WriteOutcome::NothingToDo;
        return false;
    }
    if (!mayWrite())
        return false;
    Images colWrite;
    for (clsData* item : items)
        storeItem(*item, colWrite);
    return finish(sendData(colWrite, true));
}

bool WriteTransfer::writeBlock(const clsBlock& block)
{
    start();
    if (!isReady() || !mayWrite())
        return false;
    Images colWrite;
    storeWithRelays(block, colWrite);
    return finish(sendData(colWrite, false));
}

bool WriteTransfer::writeBlockThenOne(const clsBlock* block, const QString& sTag)
{
    start();
    if (!isReady() || !mayWrite())
        return false;
    Images colWrite;
    if (block != nullptr)
        storeWithRelays(*block, colWrite);
    Images after;
    if (clsData* item = m_parts.kx.getDataByTag(sTag))
        storeItem(*item, after);
    const bool isBlockTaken = sendData(colWrite, false) && m_report.failed.isEmpty();
    if (Chosen* own = find(sTag); own != nullptr && !isBlockTaken)
        own->changed = true; // it was to put the block in force
    return finish(isBlockTaken && (after.empty() || sendData(after, true)));
}

void WriteTransfer::storeWithRelays(const clsBlock& block, Images& colWrite)
{
    storeBlock(block, colWrite);
    for (int n = 0; !block.getRelayBlock(n).isEmpty(); ++n) {
        const clsLibrary& library = m_parts.kx.library();
        const int number = library.toLong(block.getRelayBlock(n), 0);
        if (const clsBlock* relay = m_parts.kx.getBlockByNo(number))
            storeBlock(*relay, colWrite);
        else
            m_parts.kx.logError(QStringLiteral("リレーブロックが見つからない[%1]").arg(number));
    }
}

// The input range goes first and on its own: the controller takes the other values in its terms.
bool WriteTransfer::writeAll(const std::function<bool()>& beforeFirstFrame)
{
    start();
    if (!isReady() || !mayWrite())
        return false;
    if (!beforeFirstFrame()) {
        m_report.outcome = WriteOutcome::Declined;
        return false;
    }
    m_isOfAll = true;
    Images colWrite;
    for (const clsBlock* block : m_parts.kx.BlockCol())
        storeBlock(*block, colWrite);
    Images first;
    if (clsData* range = m_parts.kx.getDataByTag(tags::kInputRange))
        storeItem(*range, first);
    bool walked = first.empty() || sendData(first, true);
    // Values in terms of a range that the controller did not take mean something else there.
    const Chosen* range = find(tags::kInputRange);
    const bool isInForce = range == nullptr || !range->changed || range->carried == Chosen::Carried::Yes;
    if (walked && (isInForce || m_parts.settings.m_bComm))
        walked = sendData(colWrite, false);
    return finish(walked);
}

void WriteTransfer::storeBlock(const clsBlock& block, Images& colWrite)
{
    m_blocks << block.m_lNo;
    for (clsData* item : block.Tags())
        storeItem(*item, colWrite);
}

WriteTransfer::Chosen* WriteTransfer::find(const QString& tag)
{
    const auto chosen =
        std::find_if(m_chosen.begin(), m_chosen.end(), [&](const Chosen& entry) { return entry.tag == tag; });
    return chosen == m_chosen.end() ? nullptr : &*chosen;
}

void WriteTransfer::storeItem(clsData& item, Images& colWrite)
{
    clsKXAdr* image = m_parts.kx.ColAdr().find(item.WSection());
    if (image == nullptr)
        return;
    if (std::find(colWrite.begin(), colWrite.end(), image) == colWrite.end())
        colWrite.push_back(image);
    if (m_chosenTags.contains(item.Key()))
        return;
    m_chosenTags.insert(item.Key());
    const bool isUnread = !image->isFilled() && image->hasReads();
    if (isUnread || !isWritten(m_parts.kx.data(), item))
        return; // a section that was not read is reported as a whole
    // A value that is the controller's own stays what its bytes are, whatever the limits say.
    const auto held = heldValue(item, *image);
    Chosen chosen;
    chosen.tag = item.Key();
    chosen.before = item.state();
    chosen.changed = !held || !isSameValue(*held, item.Data());
    if (chosen.changed)
        chosen.refused = !storeChanged(item, *image);
    if (!chosen.refused)
        item.Edit = kEditSent;
    m_chosen.push_back(chosen);
}

bool WriteTransfer::storeChanged(clsData& item, clsKXAdr& image)
{
    const bool isValue = item.isKnown() && platform::parseDouble(item.Data()).has_value();
    const bool isOutside = isValue && !item.isAllowed();
    if (isValue && !isOutside && storeInImage(item, image))
        return true;
    (isOutside ? m_report.outsideLimits : m_report.skipped) << item.Key();
    m_parts.kx.logError(QStringLiteral("not written: %1=%2 is %3")
                            .arg(item.Key(), item.Data(),
                                 isOutside ? QStringLiteral("outside its limits")
                                           : QStringLiteral("no value that the controller can hold")));
    return false;
}

bool WriteTransfer::confirmed()
{
    if (!m_parts.settings.m_bViewSendConf ||
        m_parts.questions.showMessage(tran("Write to the KX?"), MessageStyle::kYesNoExclamation) != MessageResult::kNo)
        return true;
    m_report.outcome = WriteOutcome::Declined;
    return false;
}

// What is not known to be in the controller stays marked as changed. Off-line nothing is.
bool WriteTransfer::finish(bool sent)
{
    for (const Chosen& chosen : m_chosen) {
        clsData* item = m_parts.kx.getDataByTag(chosen.tag);
        const bool isIn = !chosen.changed || (!chosen.refused && chosen.carried == Chosen::Carried::Yes);
        if (item == nullptr || (isIn && !m_parts.settings.m_bComm))
            continue;
        item->Edit = chosen.before.edit;
        if (m_parts.settings.m_bComm || !item->isKnown())
            continue;
        item->Edit = EditState::kChanged;
        m_report.unsent << chosen.tag;
    }
    resetImages();
    return sent;
}

bool WriteTransfer::isModelRight()
{
    const clsData* code = m_parts.kx.getDataByTag(tags::kModelCode);
    const bool isRight = code == nullptr || (code->isKnown() && code->VData() == m_parts.controller.model());
    if (m_parts.settings.m_bComm || isRight)
        return true;
    m_report.outcome = WriteOutcome::WrongModel;
    m_parts.questions.showMessage(tran("Model number is different."), MessageStyle::kCritical);
    return false;
}

// True when the entries were walked to their end.
bool WriteTransfer::sendData(const Images& colWrite, bool bSingle)
{
    noteSentValues(colWrite);
    m_parts.channel.begin(m_parts.controller.slaveAddress(), m_parts.controller.transmissionMode());
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
    return walked;
}

// What the controller is to hold: a value is kept in the width and with the places that its bytes have.
void WriteTransfer::noteSentValues(const Images& colWrite)
{
    for (const clsKXAdr* image : colWrite) {
        clsKXAdr sent = *image;
        sent.setCopy();
        for (Chosen& chosen : m_chosen) {
            const clsData* item = m_parts.kx.getDataByTag(chosen.tag);
            if (item->WSection() == image->Section())
                chosen.sent = heldValue(*item, sent).value_or(item->Data());
        }
    }
}

bool WriteTransfer::sendPass(const Images& colWrite, int pass, bool bSingle, int& position)
{
    for (clsKXAdr* image : colWrite) {
        m_parts.progress.setPosition(++position);
        if (!image->isFilled() && image->hasReads()) {
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
    if (!image.writeFault(i).isEmpty()) {
        m_report.failed << QStringLiteral("%1: %2").arg(
            entryName(image, i), tran("not sent, because the definition writes bytes that it does not read"));
        return false;
    }
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
    const auto number = setValue(tag);
    if (!number) {
        m_parts.kx.logError(QStringLiteral("not written: %1: %2 has no value").arg(entryName(image, i), tag));
        const Chosen* chosen = find(tag);
        if ((chosen == nullptr || !chosen->refused) && !m_report.skipped.contains(tag))
            m_report.skipped << tag;
        return false;
    }
    const qint16 value = *number;
    const qint32 reference = library.toLong(image.WAdr(i), 0);
    clsModbus& modbus = m_parts.channel.modbus();
    m_functionCode = isAnalog ? functioncode::kWriteRegister : functioncode::kWriteCoil;
    if (!(isAnalog ? modbus.WriteAnalogSetValue(reference, value) : modbus.WriteDigitalSetValue(reference, value != 0)))
        return false;
    if (isAnalog)
        m_parts.channel.traceRequest(QStringLiteral("(SetAl)S:"));
    return true;
}

// A literal, the value of an item that is being written, or else what the controller held.
std::optional<qint16> WriteTransfer::setValue(const QString& tag)
{
    if (isLiteral(tag))
        return platform::parseInt16(tag);
    const clsData* item = m_parts.kx.getDataByTag(tag);
    if (item == nullptr)
        return std::nullopt;
    if (m_chosenTags.contains(item->Key()) && !item->isReadOnly()) {
        const Chosen* chosen = find(item->Key());
        const bool isRefused = !item->isKnown() || (chosen != nullptr && chosen->refused);
        return isRefused ? std::nullopt : platform::parseInt16(item->Data());
    }
    const clsKXAdr* image = m_parts.kx.ColAdr().find(item->RSection());
    const auto held = image == nullptr ? std::nullopt : heldValue(*item, *image);
    return held ? platform::parseInt16(*held) : std::nullopt;
}

void WriteTransfer::send(clsKXAdr& image, int i)
{
    const auto result = m_parts.channel.exchange(m_functionCode);
    if (m_parts.channel.isAborted())
        return;
    const bool good = result == RequestChannel::Result::Success;
    noteResult(image, i, good);
    if (good)
        return;
    m_report.failed << QStringLiteral("%1: %2").arg(entryName(image, i), m_parts.channel.reason());
    m_parts.kx.logError(QStringLiteral("not written: ") + m_report.failed.last());
}

void WriteTransfer::noteResult(clsKXAdr& image, int i, bool good)
{
    const bool isDirect = m_functionCode == functioncode::kMemory;
    m_report.taken += good ? 1 : 0;
    if (good && isDirect)
        image.accept(image.WAdr(i), image.WCnt(i));
    for (Chosen& chosen : m_chosen) {
        const clsData* item = m_parts.kx.getDataByTag(chosen.tag);
        if (chosen.refused || !carries(m_parts.kx.data(), image, i, *item))
            continue;
        if (!isDirect && good)
            acceptInImage(*item, *m_parts.kx.ColAdr().find(item->WSection()));
        if (!good)
            chosen.carried = Chosen::Carried::Failed;
        else if (chosen.carried == Chosen::Carried::No && item->WSection() == image.Section())
            chosen.carried = Chosen::Carried::Yes;
    }
}

void WriteTransfer::compareWithReadBack()
{
    bool isRestored = false;
    for (const Chosen& chosen : m_chosen) {
        clsData* item = m_parts.kx.getDataByTag(chosen.tag);
        const bool isThere = item->isKnown() && isSameValue(chosen.sent, item->Data());
        if (!m_report.unsent.contains(chosen.tag)) {
            if (item->isKnown() && !isThere)
                m_report.notAccepted.append({chosen.tag, chosen.sent, item->Data()});
        } else if (isThere && !chosen.refused) {
            m_report.unsent.removeAll(chosen.tag);
        } else {
            item->restore(chosen.before);
            item->Edit = EditState::kChanged;
            m_parts.kx.followUnit(*item);
            isRestored = true;
        }
    }
    if (isRestored)
        m_parts.kx.refreshSpread(false, nullptr);
    for (const NotAccepted& parameter : m_report.notAccepted)
        m_parts.kx.logError(
            QStringLiteral("not accepted: %1, sent %2, kept %3").arg(parameter.tag, parameter.sent, parameter.kept));
}

QString WriteTransfer::tran(const char* english) const
{
    return m_parts.kx.library().tranStr(QString::fromLatin1(english));
}
