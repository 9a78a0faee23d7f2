#include "ChosenCheck.h"

#include "Comparison.h"
#include "HeldValue.h"
#include "ItemValue.h"
#include "ModelCodes.h"
#include "WrittenItems.h"

#include <QSet>

#include <algorithm>

void ChosenCheck::start(const QStringList& tags)
{
    m_rows.clear();
    m_seen.clear();
    m_requests = 0;
    m_wireBytes = 0;
    QSet<const clsData*> chosen;
    for (const QString& tag : tags)
        chosen.insert(m_parts.kx.getDataByTag(tag));
    for (const auto& item : m_parts.kx.items()) {
        if (!chosen.contains(item.get()))
            continue;
        SentParameter row;
        row.tag = item->Key();
        row.changes = differsFromHeld(m_parts.kx.data(), *item);
        row.before = heldValue(m_parts.kx.data(), *item).value_or(QString());
        row.value = item->Data();
        m_rows.append(row);
    }
}

SentParameter& ChosenCheck::row(const QString& tag)
{
    return *std::find_if(m_rows.begin(), m_rows.end(), [&](const SentParameter& each) { return each.tag == tag; });
}

bool ChosenCheck::isAsked(const QString& tag) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [&](const SentParameter& each) { return each.tag == tag; });
}

// In the order of the definition. The model string is looked at, too: another controller may be at the line by now.
ChosenCheck::Images ChosenCheck::imagesOf(const QStringList& tags, bool withModel) const
{
    QStringList sections;
    for (const QString& tag : tags)
        sections << m_parts.kx.getDataByTag(tag)->WSection() << m_parts.kx.getDataByTag(tag)->RSection();
    Images images;
    for (int i = 0; i < m_parts.kx.ColAdr().count(); ++i) {
        clsKXAdr& image = m_parts.kx.ColAdr().at(i);
        const bool isModel = image.StartAddress() == modelcodes::memoryText(modelcodes::kModelAddress);
        if (sections.contains(image.Section()) || (withModel && isModel))
            images.push_back(&image);
    }
    return images;
}

// The images are read; what was not edited takes what they hold.
ReadTransfer::Look ChosenCheck::look(const Images& images)
{
    noteSeen(images);
    ReadTransfer::Look look = m_read.look(images);
    takeUnedited();
    m_requests += look.report.requests;
    m_wireBytes += look.report.wireBytes;
    return look;
}

void ChosenCheck::noteSeen(const Images& images)
{
    m_seen.clear();
    for (const auto& item : m_parts.kx.items()) {
        const auto isRead = [&](const clsKXAdr* image) { return image->Section() == item->RSection(); };
        if (std::none_of(images.begin(), images.end(), isRead))
            continue;
        const auto held = heldValue(m_parts.kx.data(), *item);
        const bool isEdited =
            isAsked(item->Key()) || item->Edit == EditState::kChanged || differsFromHeld(m_parts.kx.data(), *item);
        m_seen.push_back({item.get(), held.value_or(QString()), item->VData(), isEdited});
    }
}

// A choice sets no others here: these have values of their own.
void ChosenCheck::takeUnedited()
{
    for (const Seen& seen : m_seen) {
        const auto held = seen.isEdited ? std::nullopt : heldValue(m_parts.kx.data(), *seen.item);
        if (!held || (seen.item->isKnown() && *held == seen.item->Data()))
            continue;
        seen.item->hold(*held);
        seen.item->setKnown(true);
        seen.item->Edit = EditState::kRead;
        m_parts.kx.followUnit(*seen.item);
    }
}

// Also when the value is the same and means another one now: somebody moved the decimal point.
bool ChosenCheck::hasChanged(const Seen& seen) const
{
    const QString held = heldValue(m_parts.kx.data(), *seen.item).value_or(QString());
    return !isSameValue(held, seen.held) || seen.item->VData() != seen.shown;
}

QStringList ChosenCheck::lookFirst()
{
    QStringList tags;
    for (const SentParameter& each : m_rows)
        tags << each.tag;
    QStringList agreed;
    const Images images = imagesOf(tags, true);
    m_report.outcome = WriteOutcome::NothingToDo; // until there is
    if (tags.isEmpty() || images.empty())
        return {};
    const ReadTransfer::Look look = this->look(images);
    if (mayGoOn(look.report))
        sortOut(look.unread, agreed);
    return agreed;
}

bool ChosenCheck::isSameController()
{
    const Images model = imagesOf({}, true);
    if (model.empty() || m_read.isModelCurrent())
        return true;
    m_rows.clear();
    ReadTransfer::Look seen = look(model);
    if (seen.report.outcome == ReadOutcome::Complete && !seen.unread.isEmpty())
        seen.report.outcome = ReadOutcome::NoResponse;
    return mayGoOn(seen.report);
}

bool ChosenCheck::mayGoOn(const ReadReport& look)
{
    switch (look.outcome) {
    case ReadOutcome::Complete:
        return true;
    case ReadOutcome::WrongModel:
        m_report.outcome = WriteOutcome::WrongModel;
        m_parts.controller.setState(MainState::Confirmed);
        m_parts.notifyWrongModel(look.answeredModel);
        return false;
    case ReadOutcome::Cancelled:
        m_report.outcome = WriteOutcome::Cancelled;
        return false;
    case ReadOutcome::Aborted:
        m_report.outcome = WriteOutcome::Aborted;
        return false;
    default:
        m_report.outcome = WriteOutcome::NoAnswer;
        for (SentParameter& each : m_rows)
            fail(each, SendOutcome::Failed, look.lastFailure);
        m_parts.notifyNoResponse(look.lastFailure);
        return false;
    }
}

void ChosenCheck::sortOut(const QStringList& unread, QStringList& agreed)
{
    for (SentParameter& row : m_rows) {
        const clsData& item = *m_parts.kx.getDataByTag(row.tag);
        const auto seen =
            std::find_if(m_seen.begin(), m_seen.end(), [&](const Seen& each) { return each.item == &item; });
        if (unread.contains(item.RSection()) || unread.contains(item.WSection()))
            fail(row, SendOutcome::Failed, m_parts.tran("not read, so not written"));
        else if (seen != m_seen.end() && hasChanged(*seen))
            fail(row, SendOutcome::Conflict, m_parts.tran("the controller holds another value by now"));
        else
            agreed << row.tag;
    }
}

void ChosenCheck::fail(SentParameter& row, SendOutcome outcome, const QString& reason)
{
    row.outcome = outcome;
    row.reason = reason;
}

// Also after a write that was stopped: what went out before is looked at.
void ChosenCheck::readBack(const WriteSelection& selection)
{
    QStringList sent;
    for (const SentParameter& parameter : m_report.parameters) {
        row(parameter.tag) = parameter;
        if (parameter.outcome == SendOutcome::Accepted || parameter.outcome == SendOutcome::Failed)
            sent << parameter.tag;
    }
    if (sent.isEmpty())
        return;
    const ReadTransfer::Look look = this->look(imagesOf(sent, false));
    m_report.readBack = look.report.outcome;
    for (const QString& tag : sent) {
        const clsData& item = *m_parts.kx.getDataByTag(tag);
        const bool isRead = look.report.outcome == ReadOutcome::Complete && !look.unread.contains(item.RSection());
        judge(row(tag), selection, isRead);
    }
}

// A request that was not answered counts as failed, whatever the controller made of it.
void ChosenCheck::judge(SentParameter& row, const WriteSelection& selection, bool isRead)
{
    if (row.outcome != SendOutcome::Accepted)
        return;
    const WriteSelection::Chosen& chosen = *selection.find(row.tag);
    const clsData& item = *m_parts.kx.getDataByTag(row.tag);
    const auto held = heldValue(m_parts.kx.data(), item);
    if (chosen.answered < selection.requestsDue(chosen))
        fail(row, SendOutcome::Failed, m_parts.tran("written, but not put in force"));
    else if (!::isRead(m_parts.kx.data(), item))
        return; // a command that no read shows: its answer is all there is
    else if (!isRead || !held)
        fail(row, SendOutcome::Failed, m_parts.tran("written, but not read back"));
    else if (!isSameValue(*held, chosen.sent))
        row.outcome = SendOutcome::NotAccepted;
}

void ChosenCheck::finish()
{
    m_report.requests += m_requests;
    m_report.wireBytes += m_wireBytes;
    m_report.written = 0;
    m_report.unsent.clear();
    for (SentParameter& each : m_rows) {
        const clsData& item = *m_parts.kx.getDataByTag(each.tag);
        each.held = heldValue(m_parts.kx.data(), item).value_or(QString());
        mark(each);
        if (each.outcome == SendOutcome::Accepted)
            ++m_report.written;
        else
            m_report.unsent << each.tag;
        if (each.outcome == SendOutcome::NotAccepted)
            m_report.notAccepted.append({each.tag, each.value, each.held});
        if (each.outcome == SendOutcome::Conflict)
            m_report.conflicts << each.tag;
    }
    m_report.parameters = m_rows;
}

void ChosenCheck::mark(const SentParameter& row)
{
    clsData& item = *m_parts.kx.getDataByTag(row.tag);
    switch (row.outcome) {
    case SendOutcome::Accepted:
        if (!row.held.isEmpty())
            item.hold(row.held); // in the width that its bytes have
        item.Edit = EditState::kRead;
        item.sendMark = SendMark::None;
        break;
    case SendOutcome::NotAccepted:
    case SendOutcome::Failed:
        item.Edit = EditState::kChanged;
        item.sendMark = row.outcome == SendOutcome::Failed ? SendMark::Failed : SendMark::NotAccepted;
        break;
    default: // stays as it was
        break;
    }
}
