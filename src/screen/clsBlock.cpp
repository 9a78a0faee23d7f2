#include "clsBlock.h"

#include "clsData.h"

void clsBlock::setData(clsData* item)
{
    if (m_keys.contains(item->Key()))
        return;
    m_keys.insert(item->Key());
    m_tags.push_back(item);
}

void clsBlock::removeData()
{
    m_tags.clear();
    m_keys.clear();
}

void clsBlock::setRelayBlock(const QString& sRelay)
{
    m_relayText = sRelay;
    m_relayList = sRelay.split(u',');
}

QString clsBlock::getRelayBlock(int i) const
{
    return m_relayList.value(i);
}
