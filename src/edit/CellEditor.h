#pragma once

#include "CellClicks.h"
#include "CellEditorShell.h"
#include "EditSession.h"
#include "EntryCheck.h"
#include "Interlocks.h"
#include "MultiSelectOwner.h"

#include <QHash>
#include <QString>

#include <vector>

// The editing of the parameter grid: what a person or the program enters is held against the parameter's limits, taken,
// marked, and followed by the interlocks; what cannot be accepted is reported and put back. Values are not sent from
// here, but for the blocks and the input range that the shell is asked to write.
class CellEditor : public EditSession, public MultiSelectOwner, private InterlockTarget
{
    Q_OBJECT

public:
    CellEditor(clsKX& kx, MessagePresenter& messages, CellEditorShell& shell, QObject* parent = nullptr);

    // What happens in the grid. True: the entry was taken. Cells that are locked or cannot be written take none.
    bool checkCell(int col, int row, bool bCascade, const QString& entered);
    bool checkCell(int col, int row, bool bCascade = true); // the cell's own text
    bool changeCombo(int col, int row, int choice);         // 0-based
    bool changeCombo(int col, int row);                     // the choice that the cell shows
    // While a list is open a choice is only looked at.
    void setComboDropped(bool dropped) { m_check.setComboDropped(dropped); }
    void clickCell(int col, int row) { m_clicks.clickCell(col, row); }
    void openSelect(int col, int row) { m_clicks.openSelect(col, row); } // double click or Enter

    void writeItem(int col, int row) { m_clicks.writeItem(col, row); }       // the cell's parameter alone
    void writeBlockOf(int col, int row) { m_clicks.writeBlockOf(col, row); } // the block of the cell's parameter

    // Puts the value that the controller holds back into the cell, and into that one alone: what followed the change
    // stays. One step of undo.
    bool canRevert(int col, int row) const;
    void revert(int col, int row);
    void revertAll(const QStringList& tags); // those that can be; one step of undo
    // Changes all that differs from these stored values, as one step of undo: no interlock follows, the values belong
    // together. A value outside its limits is left out; returns those tags.
    QStringList enterSet(const QVector<QPair<QString, QString>>& values);

    // Values by tag; with bCheck they are checked like an entry, and what the check refuses is put back.
    void setVData(const QString& sTag, const QString& VData, bool bCheck) override;
    // "PQRNO" is written when the action is complete.
    void setData(const QString& sTag, const QString& sData, bool bCheck) override;
    // All that an entry of a selection table sets, with the check of each value; what depends on another one of the
    // same entry is held against all of them.
    void setEntry(const std::vector<EntrySetting>& settings) override;
    int getDataTempMax() const;
    QString getDataTag(int lIndex) const;
    QString getDataByTag(const QString& sTag) const; // the stored value; empty for a tag that does not exist
    QString getOptStr(int lIndex) const;
    void refreshSpread();

private:
    bool canRevert(const clsData& item) const;
    void revert(clsData& item);
    bool checkAsSet(const clsData& item);
    void putBack(clsData& item, const ItemState& before);
    void unmarkRepeated(clsData& item, const ItemState& before);
    void setEach(const std::vector<EntrySetting>& settings, bool bCheck);

    void setLimits(const QString& tag, const QString& lower, const QString& upper) override;

    clsKX& m_kx;
    Interlocks m_interlocks;
    EntryCheck m_check;
    CellClicks m_clicks;
    QHash<const clsData*, ItemState> m_beforeEntry; // of what an entry of a table sets
};
