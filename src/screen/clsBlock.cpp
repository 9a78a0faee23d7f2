#include "clsBlock.h"

#include <algorithm>

void clsBlock::setData(clsData* item)
{
    if (std::find(m_tags.begin(), m_tags.end(), item) == m_tags.end())
        m_tags.push_back(item);
}

void clsBlock::removeData()
{
    m_tags.clear();
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
