#pragma once

#include "ItemData.h"
#include "ItemDisplay.h"
#include "ItemLimits.h"

#include <QString>
#include <vector>

class Log;
struct ItemLookup;

// One parameter of the controller as the grid shows it: its definition and its stored value (ItemData), together with
// what the other items of the model make of them now: the display value, the decimal places, the limits. All rules are
// those of ItemDisplay, ItemLimits and ItemValue. The look-up is kept by reference and outlives the item.
class clsData : public ItemData
{
public:
    explicit clsData(ItemLookup& items) : m_items(items) {}

    void Logs(Log&, Log&) {} // part of the interface; the definition's faults go to the log of the model

    QString VData() const { return displayValue(*this, m_items); }
    void setVData(const QString& displayValue); // marks the item changed; a number is scaled up and stored
    // Also carries the choice of a Multi or Input item over to the items without a cell that belong to it.
    void setData(const QString& storedValue);
    void setComboIdx(int index); // 0-based; an index outside the combo data changes nothing

    // A stored number scaled down and formatted as this item's; what setVData stores of a number.
    QString displayOf(const QString& storedText) const { return ::displayOf(*this, m_items, storedText); }
    QString storedOf(const QString& displayText) const { return ::storedOf(*this, m_items, displayText); }
    int getDecimals() const { return decimalsOf(*this, m_items); }
    QString getFormatStr() const { return formatOf(*this, m_items); } // "#0", "#0.0", ...
    std::vector<ItemChoice> choices() const { return choicesOf(*this, m_items); }

    // Limits in display units and how a value is compared with them ("<=" or "<"), as the other items make them now. A
    // limit may name another item ("TAG" + tag); limits() gives that item's value.
    QString LimitL() const { return ItemLimits(*this, m_items).lower(); }
    QString LimitH() const { return ItemLimits(*this, m_items).upper(); }
    QString SignL() const { return ItemLimits(*this, m_items).lowerSign(); }
    QString SignH() const { return ItemLimits(*this, m_items).upperSign(); }
    LimitRange limits() const { return ItemLimits(*this, m_items).range(); }
    LimitRange givenLimits() const { return ItemLimits(*this, m_items).given(); }
    bool isAllowed() const { return ::isAllowed(*this, m_items); }
    // Why the number is not taken as an entry, in display units, under these limits.
    EntryRefusal refusalOf(const QString& displayText, const LimitRange& limits) const
    {
        return ::refusalOf(*this, m_items, limits, displayText);
    }

private:
    ItemLookup& m_items;
};
