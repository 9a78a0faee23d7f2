#pragma once

#include "CellEditorShell.h"
#include "ChangeCause.h"
#include "EditHistory.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

class MessagePresenter;
class clsKX;

// The user actions of the grid: what one of them changes is shown at its end, kept as one step of undo, and sent where
// it has to be. Also what is said and logged meanwhile. Model, messages and shell are kept.
//
// Clear the history after a read, a loaded file and a write; a model load clears it by itself.
class EditSession : public QObject
{
    Q_OBJECT

public:
    EditSession(clsKX& kx, MessagePresenter& messages, CellEditorShell& shell, QObject* parent);

    // Edits of several cells as one user action.
    class Action
    {
    public:
        explicit Action(EditSession& session) : m_session(session) { m_session.beginAction(); }
        ~Action() { m_session.endAction(); }
        Action(const Action&) = delete;
        Action& operator=(const Action&) = delete;

    private:
        EditSession& m_session;
    };

    // Refusals are kept instead of shown while this lives: for edits whose refusals are reported together.
    class Silence
    {
    public:
        explicit Silence(EditSession& session) : m_session(session), m_first(session.m_unsaid.size())
        {
            ++m_session.m_silence;
        }
        ~Silence()
        {
            --m_session.m_silence;
            m_session.m_unsaid.resize(m_first);
        }
        Silence(const Silence&) = delete;
        Silence& operator=(const Silence&) = delete;
        QStringList unsaid() const { return m_session.m_unsaid.mid(m_first); }

    private:
        EditSession& m_session;
        qsizetype m_first;
    };

    clsKX& model() const { return m_kx; }
    int notify(const QString& text, int style, const QString& title = {}); // unless silenced; the answer

    // Whether a person may change the item's cell.
    bool isOpen(const clsData& item) const;

    // While a read or write is going on, values stay as they were chosen: undo, redo, and what other windows ask for.
    bool isBusy() const { return m_shell.isBusy(); }
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    void undo();
    void redo();
    void clear();

    // Lines of the event log.
    void logItem(const clsData& item, const QString& word) const;
    void logEvent(const QString& line) const;

    // Within an action.
    void noteSent(bool sent);                 // what has gone out cannot be undone
    void noteRange() { m_rangeIsDue = true; } // the input range was set and goes out when the action is complete
    void showChanges();                       // what it has changed so far decides how other cells are shown

    // Items that an interlock has given limits of their own, which count until the entry is done.
    void startEntry() { m_limitsGiven.clear(); }
    // What a person enters: where its value comes from is said, and that of what follows from it. Pasted ones are named
    // once for all of them.
    void startEntry(clsData& item, ChangeCause::Kind kind);
    void setPasting(bool pasting) { m_isPasting = pasting; }
    // Shows the item as changed.
    void showChanged(clsData& item);
    void keepCause(const clsData& item) { m_causedHere.insert(&item); } // the item has been told already
    void noteLimits(const clsData& item) { m_limitsGiven.insert(&item); }
    bool hasGivenLimits(const clsData& item) const { return m_limitsGiven.contains(&item); }

Q_SIGNALS:
    void edited();                   // a user action has changed something, or was undone or redone
    void historyChanged();           // canUndo and canRedo may answer differently
    void restored(int col, int row); // by undo or redo: the cell to be looked at

private:
    void showRestored(const clsData* item);
    void beginAction();
    void endAction();
    bool changesDisplay(const clsData& changed);
    bool decidesDisplay(const std::vector<clsData*>& changed);
    ChangeCause causeOf(const clsData& item) const;
    void noteCauses(const std::vector<clsData*>& changed);
    void showLimited(const std::vector<clsData*>& changed);

    clsKX& m_kx;
    MessagePresenter& m_messages;
    CellEditorShell& m_shell;
    EditHistory m_history;
    int m_silence = 0;
    QStringList m_unsaid;
    QSet<const clsData*> m_limitsGiven;
    const clsData* m_entered = nullptr;      // what the action, or the entry of it that runs, is about
    const clsData* m_firstEntered = nullptr; // of the action
    ChangeCause::Kind m_enteredBy = ChangeCause::Kind::None;
    bool m_isPasting = false;
    QSet<const clsData*> m_causedHere; // shown as changed by the action that runs

    // The user action that runs.
    int m_depth = 0;
    bool m_redraw = false; // all cells are to be drawn again at its end
    bool m_sent = false;
    bool m_rangeIsDue = false;
    QSet<const clsData*> m_decimalsSources; // items that others take their decimal places from
    bool m_sourcesKnown = false;
};
