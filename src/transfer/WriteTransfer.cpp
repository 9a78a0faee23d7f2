#include "WriteTransfer.h"

#include "Tags.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <algorithm>

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

bool WriteTransfer::mayWrite()
{
    return isConfirmed() && isModelRight() && (m_parts.settings.m_bComm || m_check.isSameController());
}

// Once it is known what goes out.
bool WriteTransfer::begin(const QString& cause)
{
    if (m_beforeFirstFrame(cause, m_selection.parameters()))
        return true;
    m_selection.abandon();
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
    m_parts.notifyWrongModel(code != nullptr && code->isKnown() ? code->VData() : QString());
    return false;
}

bool WriteTransfer::writeItems(const QStringList& tags)
{
    if (!start())
        return false;
    const std::vector<clsData*> items = writtenItems(tags);
    if (items.empty()) {
        m_report.outcome = WriteOutcome::NothingToDo;
        return false;
    }
    if (!mayWrite())
        return false;
    Images colWrite;
    for (clsData* item : items)
        m_selection.add(*item, colWrite);
    return begin(namesOf(items)) && finish(sendData(colWrite, Scope::Single));
}

std::vector<clsData*> WriteTransfer::writtenItems(const QStringList& tags) const
{
    std::vector<clsData*> items;
    for (const QString& tag : tags) {
        clsData* item = m_parts.kx.getDataByTag(tag);
        if (item != nullptr && m_parts.kx.ColAdr().find(item->WSection()) != nullptr)
            items.push_back(item);
    }
    return items;
}

QString WriteTransfer::namesOf(const std::vector<clsData*>& items) const
{
    QStringList names;
    for (const clsData* item : items)
        names << m_parts.kx.library().tranStr(item->nameOrTag());
    return names.join(QStringLiteral(", "));
}

// The line may be slow: what the controller holds is asked for when the user has said yes.
bool WriteTransfer::writeChosen(const QStringList& tags)
{
    const bool mayLook = start() && !m_parts.settings.m_bComm && mayWrite();
    m_check.start(tags);
    const QStringList agreed = mayLook ? m_check.lookFirst() : QStringList();
    bool walked = false;
    if (!agreed.isEmpty() && isStopped()) {
        m_report.outcome = m_parts.channel.isAborted() ? WriteOutcome::Aborted : WriteOutcome::Cancelled;
    } else if (!agreed.isEmpty()) {
        m_selection.clear();
        walked = sendChosen(agreed);
    }
    if (mayLook)
        m_check.finish();
    return walked;
}

// The input range goes first and on its own: the controller reads the other values in its terms.
bool WriteTransfer::sendChosen(const QStringList& tags)
{
    const std::vector<clsData*> items = writtenItems(tags);
    Images first;
    Images colWrite;
    for (clsData* item : items)
        m_selection.add(*item, item->Key() == tags::kInputRange ? first : colWrite);
    if (!begin(namesOf(items)))
        return false;
    bool walked = first.empty() || sendData(first, Scope::Chosen);
    if (walked && isRangeInForce() && !colWrite.empty())
        walked = sendData(colWrite, Scope::Chosen);
    finish(walked);
    m_check.readBack(m_selection);
    return walked;
}

bool WriteTransfer::writeBlock(const clsBlock& block)
{
    if (!start() || !mayWrite())
        return false;
    Images colWrite;
    m_selection.addWithRelays(block, colWrite);
    return begin(m_parts.kx.library().tranStr(block.m_sName)) && finish(sendData(colWrite, Scope::Blocks));
}

bool WriteTransfer::writeBlockThenOne(const clsBlock* block, const QString& sTag)
{
    if (!start() || !mayWrite())
        return false;
    Images colWrite;
    if (block != nullptr)
        m_selection.addWithRelays(*block, colWrite);
    Images after;
    if (clsData* item = m_parts.kx.getDataByTag(sTag))
        m_selection.add(*item, after);
    if (!begin(block == nullptr ? sTag : m_parts.kx.library().tranStr(block->m_sName)))
        return false;
    const bool isBlockWritten = sendData(colWrite, Scope::Blocks) && m_report.failed.isEmpty();
    if (!isBlockWritten)
        m_selection.keepMarked(sTag); // it was to put the block in force
    return finish(isBlockWritten && (after.empty() || sendData(after, Scope::Single)));
}

// The input range goes first and on its own: the controller reads the other values in its terms.
bool WriteTransfer::writeAll()
{
    if (!start() || !mayWrite())
        return false;
    m_isOfAll = true;
    Images colWrite;
    for (const clsBlock* block : m_parts.kx.BlockCol())
        m_selection.addBlock(*block, colWrite);
    Images first;
    if (clsData* range = m_parts.kx.getDataByTag(tags::kInputRange))
        m_selection.add(*range, first);
    if (!begin(m_parts.tran("all parameters")))
        return false;
    bool walked = first.empty() || sendData(first, Scope::Single);
    if (walked && (isRangeInForce() || m_parts.settings.m_bComm))
        walked = sendData(colWrite, Scope::Blocks);
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
bool WriteTransfer::sendData(const Images& colWrite, Scope scope)
{
    m_selection.noteSent(colWrite);
    m_parts.begin(WriteRequests::kPasses * static_cast<int>(colWrite.size()));
    int position = 0;
    bool walked = sendPass(colWrite, 0, scope, position);
    if (walked && !m_parts.settings.m_bComm) {
        pauseBeforeSets(colWrite, scope);
        walked = sendPass(colWrite, 1, scope, position);
    }
    m_report.requests += m_parts.channel.requests();
    m_report.wireBytes += m_parts.channel.wireBytes();
    m_parts.progress.close();
    m_report.outcome = walked                        ? WriteOutcome::Complete
                       : m_parts.channel.isAborted() ? WriteOutcome::Aborted
                                                     : WriteOutcome::Cancelled;
    return walked;
}

// The controller needs time before values are put in force.
void WriteTransfer::pauseBeforeSets(const Images& colWrite, Scope scope)
{
    const auto putsInForce = [](const clsKXAdr* image) {
        for (int i = 1; i <= image->WMsgMax(); ++i) {
            if (image->putsInForce(i))
                return true;
        }
        return false;
    };
    const bool isChosen = scope == Scope::Chosen && std::any_of(colWrite.begin(), colWrite.end(), putsInForce);
    if (scope != Scope::Single && !isChosen)
        return;
    m_parts.channel.pause(kPauseMs);
    m_report.pausesMs += kPauseMs;
}

bool WriteTransfer::sendPass(const Images& colWrite, int pass, Scope scope, int& position)
{
    for (clsKXAdr* image : colWrite) {
        m_parts.progress.setPosition(++position);
        if (image->isUnread()) {
            if (pass == 0)
                m_report.failed.append(
                    {image->Section(), m_parts.tran("not read, so not written"), m_selection.tagsIn(*image, 0)});
            continue;
        }
        if (!sendImage(*image, pass, scope))
            return false;
    }
    return !isStopped();
}

// False when the write was stopped: by the user after a request, by the end of the program at any time.
bool WriteTransfer::sendImage(clsKXAdr& image, int pass, Scope scope)
{
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        if (m_parts.channel.isAborted())
            return false;
        if (!m_requests.build(image, i, pass, scope))
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
    // A request that the end of the program leaves without its reply may have reached the controller.
    const bool isCutShort = m_parts.channel.isAborted();
    const bool good = result == RequestChannel::Result::Success && !isCutShort;
    m_report.accepted += good ? 1 : 0;
    m_selection.noteReply(image, i, good);
    if (good)
        return;
    m_report.failed.append({TransferParts::entryName(image, image.WCmd(i), image.WAdr(i)),
                            isCutShort ? m_parts.tran("It was cancelled.") : m_parts.channel.reason(),
                            m_selection.tagsIn(image, i)});
    m_parts.kx.logError(QStringLiteral("not written: ") + m_report.failed.last().text());
}
