#pragma once

#include "ChoiceTable.h"

#include <QSet>
#include <QString>

#include <vector>

class clsData;
class clsKX;

// Carries the choice made for one item over to the items without a cell that belong to it: the input range sets its
// limits and its decimal places, and so on.
class MultiSet
{
public:
    explicit MultiSet(clsKX& owner) : m_owner(owner) {}

    // Applies every entry of the table whose identifying element equals the stored value as a number. An item that is
    // reached again through its own choices is not applied once more, and a cascade of very many entries ends.
    void apply(const clsData& item, const ChoiceTable& table, const QString& storedValue);

private:
    void applyEntry(const std::vector<EntrySetting>& settings);
    void applyOne(const EntrySetting& setting);

    clsKX& m_owner;
    QSet<const clsData*> m_running; // items whose choices are being applied, one inside the other
    int m_applied = 0;              // entries in the cascade that runs
};
