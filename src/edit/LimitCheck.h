#pragma once

#include "Translator.h"

#include <QString>

class clsData;
class clsKX;

// The limits of one numeric item with their references to other items resolved: what an entry is held against and what
// the user is told.
struct LimitCheck
{
    QString lower;
    QString lowerSign;
    QString upperSign;
    QString upper;

    // The limits in force, or those last given to the item by an entry elsewhere (given = true).
    static LimitCheck of(const clsData& item, const clsKX& kx, bool given = false);

    bool allows(const QString& value) const;

    // "0 <= ( Set value ) <= 1300", the item's name between the given marks.
    QString text(const QString& title) const { return lower + u' ' + lowerSign + title + upperSign + u' ' + upper; }

    // What the user is told about a value outside.
    QString refusal(const clsData& item, const TranslateText& tran) const;
};
