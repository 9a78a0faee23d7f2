#pragma once

#include "GridModel.h"
#include "clsINI.h"

#include <QString>
#include <QStringList>

class clsBlock;
class clsData;
class clsKX;
class clsLibrary;
struct ModelEntry;

// Lays a screen file into the grid: cells, column widths, blocks, labels, data items, and raises the progress events.
// Lives for one load.
class GridBuilder
{
public:
    GridBuilder(clsKX& owner, clsINI& screen);

    // The screen file of a model in the definition folder.
    static clsINI screenFile(clsLibrary& library, const ModelEntry& entry);

    void build();

private:
    void prepareGrid();
    void buildBlocks();
    void buildBlock(int n, const QString& section);
    void buildLabels();
    void buildLabel(const QString& section);
    void buildItems();
    void buildItem(int n, const QString& section);
    void layItem(const clsData& item);
    void markReadOnly(const clsData& item);
    void fitSizes();
    bool isBuilt(const QString& section, QString* option = nullptr);
    platform::ColorRef color(const QString& name, const QString& fallbackName) const;
    int number(const QStringList& fields, int index) const;

    clsKX& m_owner;
    clsINI& m_screen;
    platform::GridModel& m_grid;
    clsLibrary& m_library;
};
