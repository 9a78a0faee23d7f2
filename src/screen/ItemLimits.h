#pragma once

#include "Comparison.h"

#include <QString>
#include <QStringList>

class ItemData;
struct ItemLookup;

// The limits of one numeric item, with their references to other items resolved: what a value is held against and what
// the user is told about it.
struct LimitRange
{
    QString lower; // in display units, as the signs
    QString lowerSign;
    QString upperSign;
    QString upper;

    bool allows(const QString& displayText) const; // a limit that is no number lets nothing pass

    // "0 <= ( Set value ) <= 1300", the item's name between the given marks.
    QString text(const QString& title) const { return lower + u' ' + lowerSign + title + upperSign + u' ' + upper; }
};

// The limits of one item in display units, as its tag and the values of other items make them: input range, PID,
// output limits, alarms. A limit text "TAG" + tag stands for that tag's display value; lower and upper leave it as it
// is where no rule applies.
class ItemLimits
{
public:
    ItemLimits(const ItemData& item, const ItemLookup& items) : m_item(item), m_items(items) {}

    QString lower() const;
    QString upper() const;
    QString lowerSign() const; // "<=" or "<"
    QString upperSign() const;

    LimitRange range() const; // the limits in force
    LimitRange given() const; // those last given to the item by an entry elsewhere

private:
    const QString& rawLower() const;
    const QString& rawUpper() const;
    QString stored(const QString& limit) const;
    QString setValueLimit(bool lower) const;
    QString formatted(const QString& limit) const;
    bool isOutputNegative() const;
    bool isOutputAboveFull() const;

    const ItemData& m_item;
    const ItemLookup& m_items;
};

// Whether the item may go out: a number within its limits, or a choice that exists.
bool isAllowed(const ItemData& item, const ItemLookup& items);

// Why an entry is not taken.
enum class EntryRefusal { None, OutsideLimits, EqualInputLimits, UnclearComma };
// displayText: the entry for a numeric item, as plainNumber gives it; what the controller rounds is held against the
// limits too.
EntryRefusal refusalOf(const ItemData& item, const ItemLookup& items, const LimitRange& limits,
                       const QString& displayText);

// Tags whose values decide the limits of the item, besides the settings that decide how others are read.
QStringList limitSources(const ItemData& item);
