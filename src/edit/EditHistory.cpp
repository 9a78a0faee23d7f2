#include "EditHistory.h"

#include "clsKX.h"

EditHistory::Snapshot EditHistory::snapshotOf(clsData& item) const
{
    Snapshot snapshot{&item, item.state(), {}};
    if (item.Visible() && m_kx.spread() != nullptr)
        snapshot.cell = m_kx.spread()->cell(item.Row(), item.Col());
    return snapshot;
}

void EditHistory::begin()
{
    m_before.clear();
    m_before.reserve(m_kx.items().size() + m_kx.duplicates().size());
    for (const auto* items : {&m_kx.items(), &m_kx.duplicates()}) {
        for (const auto& item : *items)
            m_before.push_back(snapshotOf(*item));
    }
    m_unitBefore = m_kx.unitSwitch();
}

bool EditHistory::isSame(const Snapshot& snapshot) const
{
    const clsData& item = *snapshot.item;
    const bool hasCell = item.Visible() && m_kx.spread() != nullptr;
    return snapshot.state == item.state() && (!hasCell || snapshot.cell == m_kx.spread()->cell(item.Row(), item.Col()));
}

std::vector<clsData*> EditHistory::changed() const
{
    std::vector<clsData*> items;
    for (const Snapshot& before : m_before) {
        if (before.state.data != before.item->Data())
            items.push_back(before.item);
    }
    return items;
}

const clsData* EditHistory::shownOf(const Step& step, const clsData* about)
{
    const clsData* first = nullptr;
    for (const Change& change : step.changes) {
        const clsData* item = change.before.item;
        if (!item->Visible())
            continue;
        if (item == about)
            return about;
        if (first == nullptr && change.before.state.data != change.after.state.data)
            first = item;
    }
    return first;
}

void EditHistory::finish(bool keep, const clsData* about)
{
    Step step;
    for (Snapshot& before : m_before) {
        if (!isSame(before))
            step.changes.push_back({before, snapshotOf(*before.item)});
    }
    step.unitBefore = m_unitBefore;
    step.unitAfter = m_kx.unitSwitch();
    step.shown = shownOf(step, about);
    m_before.clear();
    if (!keep || (step.changes.empty() && step.unitBefore == step.unitAfter))
        return;
    m_steps.resize(m_next);
    if (m_steps.size() == kMaxSteps)
        m_steps.erase(m_steps.begin());
    m_steps.push_back(std::move(step));
    m_next = m_steps.size();
}

void EditHistory::put(const Snapshot& snapshot)
{
    snapshot.item->restore(snapshot.state);
    if (snapshot.item->Visible() && m_kx.spread() != nullptr)
        m_kx.spread()->setCell(snapshot.item->Row(), snapshot.item->Col(), snapshot.cell);
}

const clsData* EditHistory::undo()
{
    if (!canUndo())
        return nullptr;
    const Step& step = m_steps[--m_next];
    for (const Change& change : step.changes)
        put(change.before);
    m_kx.setUnitSwitch(step.unitBefore);
    m_kx.showUnits();
    return step.shown;
}

const clsData* EditHistory::redo()
{
    if (!canRedo())
        return nullptr;
    const Step& step = m_steps[m_next++];
    for (const Change& change : step.changes)
        put(change.after);
    m_kx.setUnitSwitch(step.unitAfter);
    m_kx.showUnits();
    return step.shown;
}

void EditHistory::clear()
{
    m_steps.clear();
    m_next = 0;
}

void EditHistory::forgetItems()
{
    clear();
    m_before.clear();
}
