#pragma once

#include "GridModel.h"
#include "clsData.h"

#include <vector>

class clsKX;

// The edits since the last read, load or write, as steps of one user action each: everything that the action and its
// interlocks changed, items with and without a cell, their cells and the unit switch.
//
// begin before an action, finish after it; undo and redo outside of one. A step refers to the items of the model that
// is loaded: forgetItems before they go.
class EditHistory
{
public:
    static constexpr size_t kMaxSteps = 1000;

    explicit EditHistory(clsKX& kx) : m_kx(kx) {}

    void begin();
    std::vector<clsData*> changed() const; // items whose stored value is no longer that of begin
    // keep false: the step can never be undone. about: what the action was about, may be null.
    void finish(bool keep, const clsData* about);

    bool canUndo() const { return m_next > 0; }
    bool canRedo() const { return m_next < m_steps.size(); }
    // Return the item to be looked at: what the action was about if that changed, else the first that has a cell; null
    // when nothing with a cell changed.
    const clsData* undo();
    const clsData* redo();
    void clear();       // all steps; an action that runs goes on
    void forgetItems(); // the action that runs too

private:
    struct Snapshot
    {
        clsData* item = nullptr;
        ItemState state;
        platform::Cell cell;
    };
    struct Change
    {
        Snapshot before;
        Snapshot after;
    };
    struct Step
    {
        std::vector<Change> changes;
        int unitBefore = 0;
        int unitAfter = 0;
        const clsData* shown = nullptr;
    };

    Snapshot snapshotOf(clsData& item) const;
    bool isSame(const Snapshot& snapshot) const;
    static const clsData* shownOf(const Step& step, const clsData* about);
    void put(const Snapshot& snapshot);

    clsKX& m_kx;
    std::vector<Snapshot> m_before;
    int m_unitBefore = 0;
    std::vector<Step> m_steps;
    size_t m_next = 0; // steps from here on are undone
};
