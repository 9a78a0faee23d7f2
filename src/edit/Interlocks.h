#pragma once

#include <QString>

class clsData;
class clsKX;

// What an interlock does to the other parameters.
class InterlockTarget
{
public:
    virtual ~InterlockTarget() = default;
    // Sets a display value; with bCheck the parameter's own limits and interlocks follow.
    virtual void setVData(const QString& sTag, const QString& VData, bool bCheck) = 0;
    virtual void setLimits(const QString& tag, const QString& lower, const QString& upper) = 0;
};

// The fixed ties between parameters: a change of an input limit moves the set-value limits, those move the set values,
// the control action turns the proportional band on and off, and so on. One entry sets off one of these rules; rules
// further on follow by way of the target.
class Interlocks
{
public:
    // Both are kept.
    Interlocks(clsKX& kx, InterlockTarget& target) : m_kx(kx), m_target(target) {}

    // A numeric item has taken a new value. bCascade false: the set values stay as they are.
    void afterNumber(const clsData& item, bool bCascade);
    // A choice was made in a combo box, or its bit was switched.
    void afterChoice(const clsData& item);
    // The unit switch takes over the item's value.
    void switchUnit(const clsData& item);

private:
    void moveSetValueLimits(const clsData& changed);
    void swapSetValueLimits(bool reversed);
    void keepSetValues(const QString& bound, bool isLower);
    void limitGap(const clsData& band);
    void switchBand(const clsData& action);
    void chooseAction(const clsData& action);
    void chooseActionKX9(bool isPid);
    void setBand(bool isPid, const QString& value);
    void move(const QString& tag, const QString& sign, const QString& bound);
    QString display(const QString& tag) const; // empty for a tag that does not exist

    clsKX& m_kx;
    InterlockTarget& m_target;
};
