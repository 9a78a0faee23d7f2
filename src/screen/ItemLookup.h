#pragma once

#include "DecimalTable.h"
#include "DefinitionLog.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <vector>

class ItemData;
class clsLibrary;

// What the rules about one item need of the others: the items by tag, and the settings of the model that all share.
// The items belong to the model.
struct ItemLookup
{
    clsLibrary* library = nullptr;
    QString modelString; // of the controller in use
    int unitSwitch = 0;  // which input table an item uses: 0 Celsius, else Kelvin
    DecimalTable eventDot;
    DecimalTable eventBandDot;
    QHash<QString, ItemData*> byTag;

    // Null when not found. A tag that does not exist is tried with "1" to "9" behind it.
    ItemData* find(const QString& tag) const;

    mutable DefinitionLog log;

    // Look-ups and choices that run, one inside the other: none of them leads back into itself.
    mutable std::vector<const ItemData*> resolving; // items whose decimal places are being looked up
    QSet<const ItemData*> choosing;                 // items whose choices are being applied
    int entriesApplied = 0;                         // of the choices that run
};
