#pragma once

#include "ControllerState.h"
#include "FileQuestion.h"
#include "RecentFiles.h"

#include <QDateTime>
#include <QObject>
#include <QString>

#include <functional>

class CellEditor;
class MessagePresenter;
class ProgramContext;
class clsKX;
struct ParameterSet;

// The parameter file that the grid stands for: opening, saving, the files used last, and whether the grid holds changes
// that would be lost with it. Model, program and questions are kept, not owned.
class ParameterFiles : public QObject
{
    Q_OBJECT

public:
    ParameterFiles(clsKX& kx, ProgramContext& program, MessagePresenter& questions, QObject* parent = nullptr);

    void setChooser(const FileChooser& chooser) { m_choose = chooser; }
    // Called before the values are looked at, so that an entry which is still open in the grid is one of them. False:
    // it is refused, and nothing is done.
    void setFinishEntry(const std::function<bool()>& finish) { m_finishEntry = finish; }
    // What shows the changes instead of discarding them.
    void setReview(const std::function<void()>& review) { m_review = review; }

    // Asks for a file and loads it. While the program works on-line the grid must hold what the controller holds.
    void openDataFile(MainState state);
    // Asks for a file of any model, and opens it as one from outside.
    void openAny(MainState state);
    void openRecent(const QString& file, MainState state); // machine path
    // A file that comes from outside the window: named at the start, dropped, handed over. Over current data of its
    // model it is loaded as ever; else its model takes the place of the one in the grid, and the values are only the
    // file's: no changes.
    void openGiven(const QString& file, MainState state);
    void saveDataFile(); // asks for the name
    // Without a question, into the file that the grid stands for; asks where there is none, or where somebody else
    // changed it since.
    void save();
    // The values of a backup become changes, as one step of undo; nothing is sent.
    void loadAsChanges(const ParameterSet& set, CellEditor& editor, MainState state);
    // How many values would be lost with what the grid holds: on-line those that were not sent, off-line those that
    // are not in the file that the grid stands for.
    int changes() const;
    // Whether they may be lost: the user is asked, unless there are none or the options say otherwise.
    [[nodiscard]] bool mayDiscard() const;
    // The same before a read. Off-line it replaces the values of a file by defaults: asked, unless a read asks by
    // itself.
    [[nodiscard]] bool mayReplace() const;
    // The grid holds something else now: a controller's values, another model.
    void forget();

    const RecentFiles& recent() const { return m_recent; }
    void clearRecent();
    QString file() const { return m_file; } // machine path; empty: the grid stands for no file
    // With a file: the values differ from those last loaded or saved. Without: a value was changed and not sent.
    bool isChanged() const;

Q_SIGNALS:
    void loaded();
    void modelWanted(int modelNumber, const QString& modelString); // the grid is of this model when it returns
    void fileChanged();                                            // file(), recent() or isChanged() answer differently

private:
    bool mayOpen(MainState state);
    bool hasUsableName(const QString& file); // false: the user has been notified
    void load(const QString& file);
    bool take(const QString& file); // false: the user has been notified
    void accept(const QString& file);
    void reportLoad();
    QString namesOf(const QStringList& tags) const;
    void saveTo(const QString& file);
    void standFor(const QString& file);
    QString folder() const;
    QString proposedName() const;
    FileQuestion question(bool save) const;

    clsKX& m_kx;
    ProgramContext& m_program;
    MessagePresenter& m_questions;
    FileChooser m_choose;
    std::function<void()> m_review;
    std::function<bool()> m_finishEntry = [] { return true; };
    RecentFiles m_recent;
    QString m_file;
    QDateTime m_fileTime; // when it was changed last, as far as is known here
    QStringList m_values; // of the file, in item order
};

// "Vorlant - [KX41000000-10A - furnace.kx[*]]": program, model and file; the mark in brackets stands where a window
// shows that there are changes. A model or file that is empty is left out.
QString windowTitleText(const QString& program, const QString& model, const QString& file);
