#pragma once

#include "CellEditorShell.h"

class EditSession;
class Interlocks;
class clsKX;

// Buttons and double clicks of the grid: switches bits, has blocks written, opens the selection tables. What it is
// given is kept; the cell editor owns it.
class CellClicks
{
public:
    CellClicks(EditSession& session, Interlocks& interlocks, CellEditorShell& shell);

    void clickCell(int col, int row);
    void openSelect(int col, int row);
    // Send the parameter of the cell, or its block with its relay blocks, which is read back then.
    void writeItem(int col, int row);
    void writeBlockOf(int col, int row);

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

    EditSession& m_session;
    Interlocks& m_interlocks;
    CellEditorShell& m_shell;
    clsKX& m_kx;
};
