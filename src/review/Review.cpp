#include "Review.h"

#include "HeldValue.h"
#include "ItemDisplay.h"
#include "clsKX.h"

#include <algorithm>

namespace {

ReviewState stateOf(SendOutcome outcome)
{
    switch (outcome) {
    case SendOutcome::Conflict:
        return ReviewState::Conflict;
    case SendOutcome::Refused:
        return ReviewState::Refused;
    case SendOutcome::Failed:
        return ReviewState::Failed;
    case SendOutcome::NotAccepted:
        return ReviewState::NotAccepted;
    case SendOutcome::Accepted:
        return ReviewState::Accepted;
    case SendOutcome::NotSent:
        break;
    }
    return ReviewState::NotSent;
}

bool isToRetry(ReviewState state)
{
    return state == ReviewState::Failed || state == ReviewState::NotAccepted;
}

} // namespace

ReviewRow Review::rowOf(const clsData& item) const
{
    const Note note = m_notes.value(item.Key());
    ReviewRow row{changeRow(m_kx, item), false, note.state, note.reason, {}};
    if (!row.change.isAllowed && row.state == ReviewState::Changed)
        row.state = ReviewState::Refused;
    const bool isOpen = row.state == ReviewState::Changed || row.state == ReviewState::NotSent || isToRetry(row.state);
    row.ticked = row.state != ReviewState::Accepted &&
                 note.ticked.value_or(isOpen && row.change.kind == ParameterClass::Setting);
    if (row.state == ReviewState::Conflict)
        row.seenShown = shownValue(item, m_kx.data().lookup, note.seen);
    return row;
}

void Review::refresh()
{
    m_rows.clear();
    for (const auto& item : m_kx.items()) {
        const auto note = m_notes.find(item->Key());
        if (note != m_notes.end() && note->value != item->Data())
            m_notes.erase(note);
        if (differsFromHeld(m_kx.data(), *item) || hasOutcome(item->Key()))
            m_rows.push_back(rowOf(*item));
    }
}

bool Review::hasOutcome(const QString& tag) const
{
    const auto note = m_notes.find(tag);
    return note != m_notes.end() && note->state != ReviewState::Changed && note->state != ReviewState::NotSent;
}

// What was accepted stays in the list until the next read, so that it can be seen. What did not change and arrived is
// no news.
void Review::noteWrite(const WriteReport& report)
{
    for (const SentParameter& sent : report.parameters) {
        const clsData* item = m_kx.getDataByTag(sent.tag);
        const bool isNews = sent.changes || sent.outcome != SendOutcome::Accepted || m_notes.contains(sent.tag);
        if (item == nullptr || !isNews)
            continue;
        Note note{{}, stateOf(sent.outcome), sent.reason, sent.before, item->Data()};
        const bool isCommand = item->Class() == ParameterClass::Command;
        if (sent.outcome == SendOutcome::Conflict || (isCommand && isToRetry(note.state)))
            note.ticked = false;
        else if (sent.outcome != SendOutcome::Accepted)
            note.ticked = m_notes.value(sent.tag).ticked;
        m_notes.insert(sent.tag, note);
    }
    refresh();
}

void Review::forget()
{
    m_notes.clear();
    refresh();
}

void Review::setTicked(const QString& tag, bool ticked)
{
    const clsData* item = m_kx.getDataByTag(tag);
    if (item == nullptr)
        return;
    Note& note = m_notes[item->Key()];
    note.ticked = ticked;
    note.value = item->Data();
    for (ReviewRow& row : m_rows) {
        if (row.change.tag == item->Key())
            row.ticked = ticked && row.state != ReviewState::Accepted;
    }
}

QStringList Review::ticked() const
{
    QStringList tags;
    for (const ReviewRow& row : m_rows) {
        if (row.ticked)
            tags << row.change.tag;
    }
    return tags;
}

QStringList Review::failed() const
{
    QStringList tags;
    for (const ReviewRow& row : m_rows) {
        const bool isCommand = row.change.kind == ParameterClass::Command;
        if (isToRetry(row.state) && (!isCommand || row.ticked))
            tags << row.change.tag;
    }
    return tags;
}

int Review::changes() const
{
    return static_cast<int>(std::count_if(m_rows.begin(), m_rows.end(),
                                          [](const ReviewRow& row) { return row.state != ReviewState::Accepted; }));
}
