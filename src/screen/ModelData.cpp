#include "ModelData.h"

#include "clsLibrary.h"

#include <utility>

bool ModelData::isOffLine() const
{
    return library().context().settings.get().m_bComm;
}

clsData* ModelData::itemOf(const QString& tag) const
{
    const ItemData* found = lookup.find(tag);
    return found == nullptr ? nullptr : itemNumbered(found->number());
}

clsData* ModelData::itemNumbered(int n) const
{
    return m_itemByNumber.value(n, nullptr);
}

void ModelData::clear()
{
    for (clsBlock* block : blocks)
        block->removeData();
    blocks.clear();
    m_blockByNo.clear();
    m_blockByCell.clear();
    m_blocks.clear();
    m_itemByCell.clear();
    m_itemByNumber.clear();
    lookup.byTag.clear();
    items.clear();
    duplicates.clear();
    images.clear();
    labels.clear();
}

void ModelData::add(std::unique_ptr<clsBlock> block, int row, int col)
{
    clsBlock* added = block.get();
    m_blocks.push_back(std::move(block));
    blocks.push_back(added);
    m_blockByNo.insert(added->m_lNo, added);
    if (!m_blockByCell.contains({row, col}))
        m_blockByCell.insert({row, col}, added);
}

clsData& ModelData::add(std::unique_ptr<clsData> item, bool isNew)
{
    clsData& added = *item;
    m_itemByNumber.insert(added.number(), &added);
    if (added.Visible() && itemAt(added.Row(), added.Col()) == nullptr)
        m_itemByCell.insert({added.Row(), added.Col()}, &added);
    if (isNew)
        lookup.byTag.insert(added.Key(), &added);
    (isNew ? items : duplicates).push_back(std::move(item));
    if (clsBlock* block = blockOf(added.BlockNo()))
        block->setData(&added);
    return added;
}
