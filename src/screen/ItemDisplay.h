#pragma once

#include "DecimalTable.h"
#include "ItemData.h"
#include "Translator.h"

#include <QString>
#include <vector>

struct ItemLookup;

// How stored values are shown: scaled by decimal places that other items may give, or by the names of choices. The
// items look each other up in the model that they belong to; a reference that leads back to the item itself counts as a
// missing one.

// One of the values that an item can be chosen from.
struct ItemChoice
{
    QString stored;
    QString text; // as shown
};

// The display value (VData).
QString displayValue(const ItemData& item, const ItemLookup& items);
// Choices whose names are words: shown in the user's language, in a column that grows with them.
bool isNamedChoice(const QString& tag);
// The display value is a word of the definition, to be translated when it is shown.
bool hasWords(const ItemData& item);
// The display value that another stored value of the item would have.
QString shownValue(const ItemData& item, const ItemLookup& items, const QString& storedText);
// The same for a person, in the language in use.
QString translatedValue(const ItemData& item, const ItemLookup& items, const QString& storedText,
                        const TranslateText& tran);
// "Set value 1 [VQSV1]" in the language in use, as messages name a parameter; the tag alone when it has no name.
QString nameWithTag(const ItemData& item, const TranslateText& tran);
// A stored number scaled down and formatted as this item's.
QString displayOf(const ItemData& item, const ItemLookup& items, const QString& storedText);
// The stored number of an entry in display units; "0" for what is no number.
QString storedOf(const ItemData& item, const ItemLookup& items, const QString& displayText);

int decimalsOf(const ItemData& item, const ItemLookup& items);
QString formatOf(const ItemData& item, const ItemLookup& items); // "#0", "#0.0", ...

// Of a Bit, Combo, Multi or Input item, in the definition's order.
std::vector<ItemChoice> choicesOf(const ItemData& item, const ItemLookup& items);
// False for a stored value that none of its choices has; true for what is no choice.
bool isAmongChoices(const ItemData& item, const ItemLookup& items);
const ChoiceTable& inputTable(const ItemData& item, const ItemLookup& items); // of the unit in use

// The input range is a voltage or current input, which is scaled freely.
bool hasVoltageRange(const ItemLookup& items);
// "TAGxxx": that tag's display value, empty when it does not exist; else the text itself.
QString resolvedTag(const QString& text, const ItemLookup& items);
// Decimal places of alarm k (1 to 3) under its type and the decimal point: its value and its dead-band.
int alarmDecimals(const ItemLookup& items, const DecimalTable& table, int k);
