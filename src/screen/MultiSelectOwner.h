#pragma once

#include "ChoiceTable.h"

#include <QString>

#include <vector>

// Whoever takes what a selection sets: values by tag, as if they had been entered.
class MultiSelectOwner
{
public:
    virtual ~MultiSelectOwner() = default;
    // The stored value. check: with the limits and interlocks of the parameter.
    virtual void setData(const QString& sTag, const QString& sData, bool bCheck) = 0;
    // The display value.
    virtual void setVData(const QString& sTag, const QString& VData, bool bCheck) = 0;
    // All that an entry sets, in order, as one entry.
    virtual void setEntry(const std::vector<EntrySetting>& settings) = 0;
};
