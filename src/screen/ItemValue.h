#pragma once

#include <QString>

class ItemData;
struct ItemLookup;

// How an item takes a value, with what follows for items without a cell: the choice made for one carries over to those
// that belong to it; the input range sets its limits and its decimal places, and so on. The grid is not touched.

// The stored value. An item that is reached again through its own choices is not applied once more, and a cascade of
// very many entries ends.
void setStored(ItemData& item, ItemLookup& items, const QString& storedText);
// The display value: marks the item changed; a number is scaled up and stored.
void setDisplayed(ItemData& item, ItemLookup& items, const QString& displayText);

// Takes the unit switch from the item, if it is the one that shows it; nothing for others.
void followUnit(const ItemData& item, ItemLookup& items);
