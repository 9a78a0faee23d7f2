#pragma once

#include <QObject>

class CellEditor;
class FindBar;
class MainGrid;
class MainMenus;
class clsKX;

// The menu commands about the grid: the clipboard, undo, the search in the bar above it, its size. All parts are kept
// by reference.
class GridCommands : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        MainMenus& menus;
        MainGrid& grid;
        clsKX& kx;
        CellEditor& editor;
    };

    explicit GridCommands(const Parts& parts, QObject* parent = nullptr);

    void save(); // the zoom, for the next start
    void translate();
    void setEnabled(bool hasGrid); // those that need a model

private:
    void connectEdits();
    void connectFinding();
    void connectZoom();
    void setZoom(int percent);
    FindBar& bar();

    Parts m_parts;
    FindBar* m_find = nullptr; // the grid's, once it was wanted
    int m_zoom = 0;            // percent
};
