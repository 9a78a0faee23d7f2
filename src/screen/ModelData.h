#pragma once

#include "ImageCollection.h"
#include "ItemLookup.h"
#include "ModelCatalogue.h"
#include "ScreenSettings.h"
#include "clsBlock.h"
#include "clsData.h"

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

// A loaded model: its settings, blocks, items and memory images, and the look-ups among them. Owns them all; a load
// replaces blocks, items and images, so pointers from look-ups end there. Cells are given by row and column from 1.
struct ModelData
{
    ItemLookup lookup; // items by tag, and what all items share
    ModelEntry entry;
    ScreenSettings settings;
    std::vector<std::unique_ptr<clsData>> items; // in item order
    // Items whose tag an earlier one bears: they have cells, but look-ups by tag do not find them.
    std::vector<std::unique_ptr<clsData>> duplicates;
    std::vector<clsBlock*> blocks;
    ImageCollection images;
    QHash<std::pair<int, int>, QString> labels; // texts of the screen by row and column, in the language in use

    clsLibrary& library() const { return *lookup.library; }
    bool isOffLine() const; // "UseCommunicate": nothing is read

    // Null when not found. A tag that does not exist is tried with "1" to "9" behind it.
    clsData* itemOf(const QString& tag) const;
    clsData* itemAt(int row, int col) const { return m_itemByCell.value({row, col}, nullptr); }
    clsData* itemNumbered(int n) const; // of section "Datas"n
    clsBlock* blockOf(int number) const { return m_blockByNo.value(number, nullptr); }
    clsBlock* blockAt(int row, int col) const { return m_blockByCell.value({row, col}, nullptr); }

    void clear();
    void add(std::unique_ptr<clsBlock> block, int row, int col);
    // isNew false: its tag is taken. A cell that is taken keeps its first item.
    clsData& add(std::unique_ptr<clsData> item, bool isNew);

private:
    using Place = std::pair<int, int>;

    std::vector<std::unique_ptr<clsBlock>> m_blocks;
    QHash<int, clsBlock*> m_blockByNo;
    QHash<Place, clsBlock*> m_blockByCell;
    QHash<int, clsData*> m_itemByNumber;
    QHash<Place, clsData*> m_itemByCell;
};
