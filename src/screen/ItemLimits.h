#pragma once

#include <QString>
#include <QStringList>

class clsData;
class clsKX;

// The limit texts of an item as its definition gives them; the current ones can be replaced by an entry elsewhere.
struct LimitTexts
{
    QString currentLower;
    QString currentUpper;
    QString definedLower;
    QString definedUpper;
    QString lowerSign; // "<=" or "<"
    QString upperSign;
};

class clsData;

// Whether the displayed value of a numeric item lies within its limits; a limit that is no number lets nothing pass.
bool isWithinLimits(const clsData& item);
// Whether the item may go out: a number within its limits, or a choice that exists.
bool isAllowed(const clsData& item);
// Tags whose values decide the limits of the item, besides the settings that decide how others are read.
QStringList limitSources(const clsData& item);
// left, operator ("=", "<>", "<", "<=", "=<", ">", ">=", "=>"), right, as single-precision numbers.
bool compareNumbers(const QString& left, const QString& sign, const QString& right);

// The limits of one item in display units, as its tag and the values of other items make them: input range, PID,
// output limits, alarms. A limit text "TAG" + tag stands for that tag's display value.
class ItemLimits
{
public:
    ItemLimits(const clsData& item, const clsKX& owner) : m_item(item), m_owner(owner) {}

    QString lower() const;
    QString upper() const;
    QString lowerSign() const;
    QString upperSign() const;

private:
    QString rawLower() const;
    QString rawUpper() const;
    QString setValueLimit(bool lower) const;
    QString scaled(const QString& storedText) const;
    QString formatted(const QString& displayText) const;
    float display(const clsData& other) const;
    float stored(const clsData& other) const;

    const clsData& m_item;
    const clsKX& m_owner;
};
