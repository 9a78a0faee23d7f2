#pragma once

#include "ControllerState.h"

#include <QString>

class clsBlock;
class clsData;

// What the cell editor needs of the program around it. The window and the tests each have their own.
class CellEditorShell
{
public:
    virtual ~CellEditorShell() = default;
    virtual MainState state() const = 0;
    virtual bool isBusy() const = 0; // a read or write is going on

    // Send values at once; false when nothing went out. The model may be another one when they return.
    virtual bool writeOne(const QString& tag) = 0;
    // The block and its relay blocks; readBack: then read them again.
    virtual bool writeBlock(clsBlock& block, bool readBack) = 0;
    // The block and its relay blocks (null: none), then the parameter: one question, one report.
    virtual bool writeBlockThenOne(clsBlock* block, const QString& tag) = 0;

    // Lets the user choose from a selection table, section of "MultiSelect.ini", for an item; returns when the dialog
    // is closed. What was chosen arrives through setData and setVData of the editor meanwhile.
    virtual void openMultiSelect(clsData& item, const QString& section) = 0;
};
