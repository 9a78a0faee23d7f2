#pragma once

#include "CellEditor.h"
#include "CellEditorShell.h"
#include "MultiSelectOwner.h"

#include <QString>

// The cell editor where a command enters the values: the same interlocks follow as in the grid, but nothing goes out
// until all values are entered, and what is to be taken from a table is known beforehand. Meant for values that a read
// has just brought. The model is kept by reference and must be loaded.
class CommandEntry : private CellEditorShell, private MultiSelectOwner
{
public:
    explicit CommandEntry(clsKX& kx);

    clsKX& model() { return m_editor.model(); }

    // Each returns why the value is not taken; empty: it is, with all that it sets besides.
    QString enterNumber(clsData& item, const QString& text);
    QString choose(clsData& item, int choice, const QString& stored); // 0-based

private:
    bool hasOpenCell(clsData& item);
    static QString refusalIn(const CellEditor::Silence& silence);

    MainState state() const override { return MainState::UpToDate; }
    bool isBusy() const override { return false; }
    bool writeOne(const QString&) override { return false; }
    bool writeBlock(clsBlock&, bool) override { return false; }
    bool writeBlockThenOne(clsBlock*, const QString&) override { return false; }
    void openMultiSelect(clsData& item, const QString& section) override;

    void setData(const QString& sTag, const QString& sData, bool bCheck) override;
    void setVData(const QString& sTag, const QString& VData, bool bCheck) override;
    void setEntry(const std::vector<EntrySetting>& settings) override { m_editor.setEntry(settings); }

    CellEditor m_editor;
    QString m_wanted; // the stored value to be taken from the table that opens
    QString m_error;  // why it could not be
};
