#pragma once

#include "CellEditorShell.h"

class CellEditor;
class Interlocks;
class clsKX;

// Buttons and double clicks of the grid: switches bits, has blocks written, opens the selection tables. Part of the
// cell editor, which owns it.
class CellClicks
{
public:
    CellClicks(CellEditor& editor, Interlocks& interlocks, CellEditorShell& shell);

    void clickCell(int col, int row);
    void openSelect(int col, int row);

private:
    bool isUpToDate();
    bool confirm(bool isAsked);
    void clickItem(clsData& item, int col, int row);
    void switchBit(clsData& item);
    void writeUnit(const clsData& item, int col, int row);
    void logBlock(const clsBlock* block, int col, int row) const;
    void clickBlock(clsBlock* block, int col, int row, bool readBack);
    void openInput(clsData& item);
    QString translated(const char* text) const;

    CellEditor& m_editor;
    Interlocks& m_interlocks;
    CellEditorShell& m_shell;
    clsKX& m_kx;
};
