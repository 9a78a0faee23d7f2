#pragma once

#include <QString>
#include <optional>
#include <vector>

class clsBlock;
class clsData;
class clsKX;
class clsKXAdr;

// Takes stored values from the memory images into the items, and shows the items in the grid.
class GridRefresh
{
public:
    explicit GridRefresh(clsKX& owner) : m_owner(owner) {}

    // blocks: whose members take their values; null for all items. An item whose image holds no data from the
    // controller becomes unknown and is shown empty.
    void takeFromImages(const std::vector<clsBlock*>* blocks);

    // All visible items, with the lock rules.
    void showAll();
    // locked empty: the cell keeps its lock state.
    void show(const clsData& item, std::optional<bool> locked = {});

private:
    void take(clsData& item);
    std::optional<QString> offLineValue(const clsData& item, const clsKXAdr& image) const;
    static void dropMark(clsData& item, bool isWhole, int before);
    QString textOf(const clsData& item) const;
    void widen(const clsData& item);

    clsKX& m_owner;
};
