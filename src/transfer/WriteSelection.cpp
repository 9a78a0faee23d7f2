#include "WriteSelection.h"

#include "Comparison.h"
#include "HeldValue.h"
#include "ItemLimits.h"
#include "ItemStore.h"
#include "Numbers.h"
#include "WrittenItems.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

constexpr int kEditSent = 3;

} // namespace

void WriteSelection::clear()
{
    m_report = {};
    m_chosen.clear();
    m_tags.clear();
    m_blocks.clear();
    resetImages();
}

void WriteSelection::abandon()
{
    for (const Chosen& chosen : m_chosen)
        m_kx.getDataByTag(chosen.tag)->Edit = chosen.before.edit;
    resetImages();
}

void WriteSelection::resetImages()
{
    const ImageCollection& all = m_kx.ColAdr();
    for (int i = 0; i < all.count(); ++i)
        all.at(i).resetWrite();
}

void WriteSelection::addWithRelays(const clsBlock& block, Images& images)
{
    addBlock(block, images);
    for (int n = 0; !block.getRelayBlock(n).isEmpty(); ++n) {
        const clsLibrary& library = m_kx.library();
        const int number = library.toLong(block.getRelayBlock(n), 0);
        if (const clsBlock* relay = m_kx.getBlockByNo(number))
            addBlock(*relay, images);
        else
            m_kx.logError(QStringLiteral("リレーブロックが見つからない[%1]").arg(number));
    }
}

void WriteSelection::addBlock(const clsBlock& block, Images& images)
{
    m_blocks << block.m_lNo;
    for (clsData* item : block.Tags())
        add(*item, images);
}

const WriteSelection::Chosen* WriteSelection::find(const QString& tag) const
{
    const auto chosen =
        std::find_if(m_chosen.begin(), m_chosen.end(), [&](const Chosen& entry) { return entry.tag == tag; });
    return chosen == m_chosen.end() ? nullptr : &*chosen;
}

bool WriteSelection::isDue(const Chosen& chosen, const clsKXAdr& image, int i) const
{
    const clsData& item = *m_kx.getDataByTag(chosen.tag);
    return item.WSection() == image.Section() && (image.putsInForce(i) || carries(m_kx.data(), image, i, item));
}

int WriteSelection::requestsDue(const Chosen& chosen) const
{
    const clsKXAdr& image = *m_kx.ColAdr().find(m_kx.getDataByTag(chosen.tag)->WSection());
    int due = 0;
    for (int i = 1; i <= image.WMsgMax(); ++i)
        due += isDue(chosen, image, i) ? 1 : 0;
    return due;
}

QStringList WriteSelection::tagsIn(const clsKXAdr& image, int i) const
{
    QStringList tags;
    for (const auto& item : m_kx.items()) {
        const bool isIn = i > 0 ? carries(m_kx.data(), image, i, *item) : item->WSection() == image.Section();
        if (isIn && contains(item->Key()))
            tags << item->Key();
    }
    return tags;
}

void WriteSelection::keepMarked(const QString& tag)
{
    for (Chosen& chosen : m_chosen)
        chosen.changed = chosen.changed || chosen.tag == tag;
}

void WriteSelection::add(clsData& item, Images& images)
{
    clsKXAdr* image = m_kx.ColAdr().find(item.WSection());
    if (image == nullptr)
        return;
    if (std::find(images.begin(), images.end(), image) == images.end())
        images.push_back(image);
    if (m_tags.contains(item.Key()))
        return;
    m_tags.insert(item.Key());
    if (image->isUnread() || !isWritten(m_kx.data(), item))
        return; // a section that was not read is reported as a whole
    // A value that is the controller's own stays what its bytes are, whatever the limits say.
    const auto held = heldValue(item, *image);
    Chosen chosen;
    chosen.tag = item.Key();
    chosen.before = item.state();
    chosen.held = held.value_or(QString());
    chosen.changed = !held || !isSameValue(*held, item.Data());
    if (chosen.changed)
        chosen.refused = !store(item, *image);
    if (!chosen.refused)
        item.Edit = kEditSent;
    m_chosen.push_back(chosen);
}

bool WriteSelection::store(clsData& item, clsKXAdr& image)
{
    const bool isValue = item.isKnown() && platform::parseDouble(item.Data()).has_value();
    const bool isOutside = isValue && !item.isAllowed();
    if (isValue && !isOutside && storeInImage(item, image))
        return true;
    (isOutside ? m_report.outsideLimits : m_report.skipped) << item.Key();
    m_kx.logError(QStringLiteral("not written: %1=%2 is %3")
                      .arg(item.Key(), item.Data(),
                           isOutside ? QStringLiteral("outside its limits")
                                     : QStringLiteral("no value that the controller can hold")));
    return false;
}

// What the controller is to hold: a value is kept in the width and with the places that its bytes have.
void WriteSelection::noteSent(const Images& images)
{
    for (const clsKXAdr* image : images) {
        clsKXAdr sent = *image;
        sent.setCopy();
        for (Chosen& chosen : m_chosen) {
            const clsData* item = m_kx.getDataByTag(chosen.tag);
            if (item->WSection() == image->Section())
                chosen.sent = heldValue(*item, sent).value_or(item->Data());
        }
    }
}

void WriteSelection::noteReply(clsKXAdr& image, int i, bool good)
{
    const bool isDirect = image.WCmd(i) == u"Direct";
    if (good && isDirect)
        image.accept(image.WAdr(i), image.WCnt(i));
    for (Chosen& chosen : m_chosen) {
        const clsData* item = m_kx.getDataByTag(chosen.tag);
        chosen.answered += good && isDue(chosen, image, i) ? 1 : 0;
        if (chosen.refused || !carries(m_kx.data(), image, i, *item))
            continue;
        if (!isDirect && good)
            acceptInImage(*item, *m_kx.ColAdr().find(item->WSection()));
        if (!good)
            chosen.carried = Chosen::Carried::Failed;
        else if (chosen.carried == Chosen::Carried::No && item->WSection() == image.Section())
            chosen.carried = Chosen::Carried::Yes;
    }
}

// What is not known to be in the controller stays marked as changed. Off-line nothing is.
void WriteSelection::finish()
{
    for (const Chosen& chosen : m_chosen) {
        clsData* item = m_kx.getDataByTag(chosen.tag);
        const bool isIn = !chosen.changed || (!chosen.refused && chosen.carried == Chosen::Carried::Yes);
        m_report.written += chosen.carried == Chosen::Carried::Yes && !chosen.refused ? 1 : 0;
        if (item == nullptr)
            continue;
        if (!m_settings.m_bComm)
            item->sendMark = !isIn && chosen.carried == Chosen::Carried::Failed ? SendMark::Failed : SendMark::None;
        if (isIn && !m_settings.m_bComm)
            continue;
        item->Edit = chosen.before.edit;
        if (m_settings.m_bComm || !item->isKnown())
            continue;
        item->Edit = EditState::kChanged;
        m_report.unsent << chosen.tag;
    }
    resetImages();
    m_report.parameters = parameters();
}

QVector<SentParameter> WriteSelection::parameters() const
{
    QVector<SentParameter> all;
    for (const Chosen& chosen : m_chosen)
        all.append(parameterOf(chosen));
    return all;
}

SentParameter WriteSelection::parameterOf(const Chosen& chosen) const
{
    const clsData& item = *m_kx.getDataByTag(chosen.tag);
    SentParameter parameter{chosen.tag,
                            SendOutcome::NotSent,
                            chosen.changed,
                            {},
                            chosen.held,
                            chosen.before.data,
                            heldValue(m_kx.data(), item).value_or(QString())};
    const auto isThis = [&](const NotAccepted& entry) { return entry.tag == chosen.tag; };
    const bool isKept = std::any_of(m_report.notAccepted.begin(), m_report.notAccepted.end(), isThis);
    if (chosen.refused)
        parameter.outcome = SendOutcome::Refused;
    else if (chosen.carried == Chosen::Carried::Failed)
        parameter.outcome = SendOutcome::Failed;
    else if (chosen.carried == Chosen::Carried::Yes)
        parameter.outcome = isKept ? SendOutcome::NotAccepted : SendOutcome::Accepted;
    parameter.reason = reasonOf(chosen);
    return parameter;
}

QString WriteSelection::reasonOf(const Chosen& chosen) const
{
    if (m_report.outsideLimits.contains(chosen.tag))
        return m_kx.library().tranStr(QStringLiteral("outside its limits or no choice"));
    if (m_report.skipped.contains(chosen.tag))
        return m_kx.library().tranStr(QStringLiteral("no value that the controller can hold"));
    for (const FailedRequest& request : m_report.failed) {
        if (request.tags.contains(chosen.tag))
            return request.reason;
    }
    return {};
}

void WriteSelection::compareWithReadBack()
{
    bool isShownAnew = false;
    for (Chosen& chosen : m_chosen) {
        clsData* item = m_kx.getDataByTag(chosen.tag);
        const bool isThere = item->isKnown() && isSameValue(chosen.sent, item->Data());
        if (!m_report.unsent.contains(chosen.tag)) {
            if (item->isKnown() && !isThere) {
                m_report.notAccepted.append({chosen.tag, chosen.sent, item->Data()});
                item->sendMark = SendMark::NotAccepted;
                isShownAnew = true;
                --m_report.written;
            }
        } else if (isThere && !chosen.refused) {
            m_report.unsent.removeAll(chosen.tag);
            chosen.carried = Chosen::Carried::Yes;
            ++m_report.written;
        } else {
            item->restore(chosen.before);
            item->Edit = EditState::kChanged;
            item->sendMark = chosen.carried == Chosen::Carried::Failed ? SendMark::Failed : SendMark::None;
            m_kx.followUnit(*item);
            isShownAnew = true;
        }
    }
    m_report.parameters = parameters();
    if (isShownAnew)
        m_kx.refreshSpread(false, nullptr);
    for (const NotAccepted& parameter : m_report.notAccepted)
        m_kx.logError(
            QStringLiteral("not accepted: %1, sent %2, kept %3").arg(parameter.tag, parameter.sent, parameter.kept));
}
