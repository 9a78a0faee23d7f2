#pragma once

#include <QString>
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

    void showAll();
    void show(const clsData& item);

private:
    void take(clsData& item);
    void takeByte(clsData& item, clsKXAdr& image);
    void takeInteger(clsData& item, clsKXAdr& image);
    void takeLong(clsData& item, clsKXAdr& image);
    bool isOffLine() const;
    void widen(const clsData& item);

    clsKX& m_owner;
};
