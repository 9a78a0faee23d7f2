#include "clsData.h"

#include "ItemLookup.h"
#include "ItemValue.h"

void clsData::setVData(const QString& displayValue)
{
    setDisplayed(*this, m_items, displayValue);
}

void clsData::setData(const QString& storedValue)
{
    setStored(*this, m_items, storedValue);
}

void clsData::setComboIdx(int index)
{
    if (index >= 0 && index < comboDatas().size())
        setData(comboDatas()[index]);
}
