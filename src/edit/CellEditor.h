#pragma once

#include "CellClicks.h"
#include "CellEditorShell.h"
#include "EditHistory.h"
#include "EntryCheck.h"
#include "Interlocks.h"
#include "MultiSelectOwner.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

#include <vector>

class MessagePresenter;

// The editing of the parameter grid: what a person or the program enters is held against the parameter's limits, taken,
// marked, and followed by the interlocks; what cannot be taken is told and put back. Values are not sent from here, but
// for the blocks and the input range that the shell is asked to write.
//
// Everything that one user action changes is one step of undo. Clear the history after a read, a loaded file and a
// write; a model load clears it by itself. Model, messages and shell are kept.
class CellEditor : public QObject, public MultiSelectOwner, private InterlockTarget
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

    // Values by tag; with bCheck they are checked like an entry, and what the check refuses is put back.
    void setVData(const QString& sTag, const QString& VData, bool bCheck) override;
    // "PQRNO" is written when the action is complete.
    void setData(const QString& sTag, const QString& sData, bool bCheck) override;
    // All that an entry of a selection table sets, with the check of each value; what depends on another one of the
    // same entry is held against all of them.
    void takeEntry(const std::vector<EntrySetting>& settings) override;
    int getDataTempMax() const;
    QString getDataTag(int lIndex) const;
    QString getDataByTag(const QString& sTag) const; // the stored value; empty for a tag that does not exist
    QString getOptStr(int lIndex) const;
    void refreshSpread();

    // Edits of several cells as one user action.
    class Action
    {
    public:
        explicit Action(CellEditor& editor) : m_editor(editor) { m_editor.beginAction(); }
        ~Action() { m_editor.endAction(); }
        Action(const Action&) = delete;
        Action& operator=(const Action&) = delete;

    private:
        CellEditor& m_editor;
    };

    // Refusals are kept instead of told while this lives: for edits whose refusals are told together.
    class Silence
    {
    public:
        explicit Silence(CellEditor& editor) : m_editor(editor), m_first(editor.m_unsaid.size()) { ++editor.m_silence; }
        ~Silence()
        {
            --m_editor.m_silence;
            m_editor.m_unsaid.resize(m_first);
        }
        Silence(const Silence&) = delete;
        Silence& operator=(const Silence&) = delete;
        QStringList unsaid() const { return m_editor.m_unsaid.mid(m_first); }

    private:
        CellEditor& m_editor;
        qsizetype m_first;
    };

    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    void undo();
    void redo();
    void clear();

    clsKX& model() { return m_kx; }
    int tell(const QString& text, int style, const QString& title = {}); // unless silenced; the answer

    // Whether a person may change the item's cell.
    bool isOpen(const clsData& item) const;

    // Lines of the event log, and what has gone out and so cannot be undone: for what works on the editor's behalf.
    void logItem(const clsData& item, const QString& word) const;
    void logEvent(const QString& line) const;
    void noteSent(bool sent);
    void showChanges(); // what the action has changed so far decides how other cells are shown

Q_SIGNALS:
    void edited();         // a user action has changed something, or was undone or redone
    void historyChanged(); // canUndo and canRedo may answer differently

private:
    void beginAction();
    void endAction();
    bool changesDisplay(const clsData& changed);
    bool decidesDisplay(const std::vector<const clsData*>& changed);
    void showLimited(const std::vector<const clsData*>& changed);
    bool checkAsSet(const clsData& item);
    void putBack(clsData& item, const ItemState& before);
    void setEach(const std::vector<EntrySetting>& settings, bool bCheck);

    void setLimits(const QString& tag, const QString& lower, const QString& upper) override;
    void redrawAll() override { m_redraw = true; }

    clsKX& m_kx;
    MessagePresenter& m_messages;
    CellEditorShell& m_shell;
    Interlocks m_interlocks;
    EntryCheck m_check;
    CellClicks m_clicks;
    EditHistory m_history;
    int m_silence = 0;
    QStringList m_unsaid;

    QHash<const clsData*, ItemState> m_beforeEntry; // of what an entry of a table sets

    // The user action that runs.
    int m_depth = 0;
    bool m_redraw = false;
    bool m_sent = false;
    bool m_rangeIsDue = false;              // the input range was set and goes out when the action is complete
    QSet<const clsData*> m_decimalsSources; // items that others take their decimal places from
    bool m_sourcesKnown = false;
};
