#include "WriteTransfer.h"

#include "Tags.h"
#include "clsCfg.h"
#include "clsLibrary.h"

// False: nothing is ever written, or nothing before the parameters were read.
bool WriteTransfer::start()
{
    m_selection.clear();
    m_isOfAll = false;
    m_bCancel = false;
    return isAllowed() && isReady();
}

bool WriteTransfer::isAllowed()
{
    if (!m_parts.settings.neverWrites())
        return true;
    m_report.outcome = WriteOutcome::Forbidden;
    m_parts.notify(m_parts.tran("Nothing was written: the program is set never to write to a controller."),
                   MessageStyle::kExclamation);
    return false;
}

bool WriteTransfer::isReady()
{
    if (m_parts.controller.state() == MainState::UpToDate)
        return true;
    m_report.outcome = WriteOutcome::NotRead;
    m_parts.notify(m_parts.tran("Please acquire the up-to-date data from the equipment."), MessageStyle::kCritical);
    return false;
}

bool WriteTransfer::mayWrite(const QString& cause)
{
    if (!isConfirmed() || !isModelRight())
        return false;
    if (m_beforeFirstFrame(cause))
        return true;
    m_report.outcome = WriteOutcome::Declined;
    return false;
}

bool WriteTransfer::isConfirmed()
{
    if (m_parts.confirmed(m_parts.settings.m_bViewSendConf, "Write to the KX?"))
        return true;
    m_report.outcome = WriteOutcome::Declined;
    return false;
}

bool WriteTransfer::isModelRight()
{
    const clsData* code = m_parts.kx.getDataByTag(tags::kModelCode);
    const bool isRight = code == nullptr || (code->isKnown() && code->VData() == m_parts.controller.model());
    if (m_parts.settings.m_bComm || isRight)
        return true;
    m_report.outcome = WriteOutcome::WrongModel;
    m_parts.notifyWrongModel();
    return false;
}

bool WriteTransfer::writeItems(const QStringList& tags)
{
    if (!start())
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
    QStringList names;
    for (const clsData* item : items)
        names << item->nameOrTag();
    if (!mayWrite(names.join(QStringLiteral(", "))))
        return false;
    Images colWrite;
    for (clsData* item : items)
        m_selection.add(*item, colWrite);
    return finish(sendData(colWrite, true));
}

bool WriteTransfer::writeBlock(const clsBlock& block)
{
    if (!start() || !mayWrite(block.m_sName))
        return false;
    Images colWrite;
    m_selection.addWithRelays(block, colWrite);
    return finish(sendData(colWrite, false));
}

bool WriteTransfer::writeBlockThenOne(const clsBlock* block, const QString& sTag)
{
    if (!start() || !mayWrite(block == nullptr ? sTag : block->m_sName))
        return false;
    Images colWrite;
    if (block != nullptr)
        m_selection.addWithRelays(*block, colWrite);
    Images after;
    if (clsData* item = m_parts.kx.getDataByTag(sTag))
        m_selection.add(*item, after);
    const bool isBlockWritten = sendData(colWrite, false) && m_report.failed.isEmpty();
    if (!isBlockWritten)
        m_selection.keepMarked(sTag); // it was to put the block in force
    return finish(isBlockWritten && (after.empty() || sendData(after, true)));
}

// The input range goes first and on its own: the controller reads the other values in its terms.
bool WriteTransfer::writeAll()
{
    if (!start() || !mayWrite(QStringLiteral("all parameters")))
        return false;
    m_isOfAll = true;
    Images colWrite;
    for (const clsBlock* block : m_parts.kx.BlockCol())
        m_selection.addBlock(*block, colWrite);
    Images first;
    if (clsData* range = m_parts.kx.getDataByTag(tags::kInputRange))
        m_selection.add(*range, first);
    bool walked = first.empty() || sendData(first, true);
    if (walked && (isRangeInForce() || m_parts.settings.m_bComm))
        walked = sendData(colWrite, false);
    return finish(walked);
}

// Values in terms of a range that the controller did not accept mean something else there.
bool WriteTransfer::isRangeInForce() const
{
    const WriteSelection::Chosen* range = m_selection.find(tags::kInputRange);
    return range == nullptr || !range->changed || range->carried == WriteSelection::Chosen::Carried::Yes;
}

bool WriteTransfer::finish(bool sent)
{
    m_selection.finish();
    return sent;
}

// True when the entries were walked to their end.
bool WriteTransfer::sendData(const Images& colWrite, bool bSingle)
{
    m_selection.noteSent(colWrite);
    m_parts.begin(WriteRequests::kPasses * static_cast<int>(colWrite.size()));
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

bool WriteTransfer::sendPass(const Images& colWrite, int pass, bool bSingle, int& position)
{
    for (clsKXAdr* image : colWrite) {
        m_parts.progress.setPosition(++position);
        if (image->isUnread()) {
            if (pass == 0)
                m_report.failed.append(
                    {image->Section(), m_parts.tran("not read, so not written"), m_selection.tagsIn(*image, 0)});
            continue;
        }
        if (!sendImage(*image, pass, bSingle))
            return false;
    }
    return !isStopped();
}

// False when the write was stopped: by the user after a request, by the end of the program at any time.
bool WriteTransfer::sendImage(clsKXAdr& image, int pass, bool bSingle)
{
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        if (m_parts.channel.isAborted())
            return false;
        if (!m_requests.build(image, i, pass, bSingle))
            continue;
        send(image, i);
        if (isStopped())
            return false;
    }
    return true;
}

void WriteTransfer::send(clsKXAdr& image, int i)
{
    if (m_parts.settings.m_bComm) {
        m_parts.channel.traceNow();
        image.setCopy();
        return;
    }
    const auto result = m_parts.channel.exchange(m_requests.functionCode());
    if (m_parts.channel.isAborted())
        return;
    const bool good = result == RequestChannel::Result::Success;
    m_report.accepted += good ? 1 : 0;
    m_selection.noteReply(image, i, good);
    if (good)
        return;
    m_report.failed.append({TransferParts::entryName(image, image.WCmd(i), image.WAdr(i)), m_parts.channel.reason(),
                            m_selection.tagsIn(image, i)});
    m_parts.kx.logError(QStringLiteral("not written: ") + m_report.failed.last().text());
}
