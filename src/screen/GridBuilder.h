#pragma once

#include "GridModel.h"
#include "ModelLoader.h"
#include "clsINI.h"

#include <QString>
#include <QStringList>

#include <functional>

class clsData;
class clsLibrary;
struct ModelData;
struct ModelEntry;

// mode 0: a phase starts, number is its total and text names it; 1: step number done; 2: the phase ended.
using LoadProgress = std::function<void(int mode, int number, const QString& text)>;

// Lays a screen file into the grid: cells, column widths, blocks, labels, data items, which become those of the model.
// build, then finish when the items hold what is to be shown. Lives for one load; all that it is given is kept.
class GridBuilder
{
public:
    GridBuilder(ModelData& model, platform::GridModel& grid, clsINI& screen, LoadProgress progress);

    // The screen file of a model in the definition folder.
    static clsINI screenFile(clsLibrary& library, const ModelEntry& entry);

    void build();  // the grid is hidden until finish, unless the settings show it
    void finish(); // widths, heights, the last progress event

private:
    void prepareGrid();
    void buildBlocks();
    void buildBlock(int n, const QString& section);
    void addTooFewFields(const QString& section, qsizetype found, int wanted);
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

    ModelData& m_model;
    ModelLoader m_loader;
    clsINI& m_screen;
    platform::GridModel& m_grid;
    clsLibrary& m_library;
    LoadProgress m_progress;
};
