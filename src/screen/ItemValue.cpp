#include "ItemValue.h"

#include "ChoiceTable.h"
#include "Comparison.h"
#include "ItemDisplay.h"
#include "ItemLookup.h"
#include "Tags.h"
#include "clsLibrary.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kFirstTarget = 2; // elements 0 and 1 number and identify the entry
constexpr int kMaxEntries = 1000;
const QString kDecimals = QStringLiteral("DOT");

// Only what has no cell: a value that is seen is not changed behind the user's back.
void applyOne(const EntrySetting& setting, ItemLookup& items)
{
    ItemData* target = items.find(setting.tag);
    if (target == nullptr || target->Visible())
        return;
    if (setting.isDisplayValue)
        setDisplayed(*target, items, setting.value);
    else
        setStored(*target, items, setting.value);
}

void applyEntry(const std::vector<EntrySetting>& settings, ItemLookup& items)
{
    const auto isPoint = [](const EntrySetting& setting) {
        return ((setting.isDisplayValue ? u'V' : u'D') + setting.tag).contains(kDecimals);
    };
    const auto point = std::find_if(settings.begin(), settings.end(), isPoint);
    // Display values set before the decimal places were known were scaled with the old ones.
    if (point != settings.end())
        std::for_each(settings.begin(), std::next(point), [&](const EntrySetting& one) { applyOne(one, items); });
    for (const EntrySetting& setting : settings)
        applyOne(setting, items);
}

// Every entry of the table whose identifying element is the stored value.
void applyChoice(const ItemData& item, ItemLookup& items, const ChoiceTable& table)
{
    if (items.choosing.contains(&item))
        return;
    if (items.choosing.isEmpty())
        items.entriesApplied = 0;
    items.choosing.insert(&item);
    const QString chosen = item.Data();
    for (const ChoiceTable::Entry& entry : table.entries()) {
        if (isSameNumber(entry.data.value(1), chosen) && ++items.entriesApplied <= kMaxEntries)
            applyEntry(entry.settings(kFirstTarget), items);
    }
    items.choosing.remove(&item);
}

} // namespace

void setStored(ItemData& item, ItemLookup& items, const QString& storedText)
{
    item.hold(storedText);
    if (item.MType() == ItemType::Multi)
        applyChoice(item, items, item.multiTable());
    else if (item.MType() == ItemType::Input)
        applyChoice(item, items, inputTable(item, items));
}

void setDisplayed(ItemData& item, ItemLookup& items, const QString& displayText)
{
    item.markEntered();
    if (item.MType() == ItemType::Data)
        item.hold(storedOf(item, items, displayText));
}

void followUnit(const ItemData& item, ItemLookup& items)
{
    if (item.Key() == tags::kUnit)
        items.unitSwitch = items.library->toLong(item.Data(), 0);
}
