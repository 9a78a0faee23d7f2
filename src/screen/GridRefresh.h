#pragma once

#include "GridModel.h"

#include <QString>
#include <optional>
#include <vector>

class clsBlock;
class clsData;
class clsKXAdr;
struct ModelData;

// Takes stored values from the memory images into the items, and shows the items in the grid. Model and grid are kept;
// without a grid (null) nothing is shown.
class GridRefresh
{
public:
    GridRefresh(ModelData& model, platform::GridModel* grid) : m_model(model), m_grid(grid) {}

    // blocks: whose members take their values; null for all items. An item whose image holds no data from the
    // controller becomes unknown and is shown empty.
    void readFromImages(const std::vector<clsBlock*>* blocks);

    // All visible items, with the lock rules.
    void showAll();
    // locked empty: the cell keeps its lock state.
    void show(const clsData& item, std::optional<bool> locked = {});
    // The unit of temperatures, beside each of them that has no other.
    void showUnits();

private:
    void read(clsData& item);
    std::optional<QString> offLineValue(const clsData& item, const clsKXAdr& image) const;
    static void dropMark(clsData& item, bool isWhole, int before);
    QString markTip(const clsData& item) const;
    QString heldTip(const clsData& item) const;
    QString otherState(const clsData& item) const;
    QString textOf(const clsData& item) const;
    void widen(int col);

    ModelData& m_model;
    platform::GridModel* m_grid;
};
