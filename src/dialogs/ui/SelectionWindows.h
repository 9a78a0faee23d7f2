#pragma once

#include "frmMultiSelect.h"

#include <QHash>
#include <QPointer>

// The selection windows, one for each table. open shows a table's window for an item, or brings it to the front.
// Windows belong to the window that opened them, which keeps this object.
class SelectionWindows
{
public:
    SelectionWindows(const clsLibrary& library, MultiSelectOwner& owner) : m_library(library), m_operations(owner) {}
    ~SelectionWindows();
    SelectionWindows(const SelectionWindows&) = delete;
    SelectionWindows& operator=(const SelectionWindows&) = delete;

    void Logs(Log& objErrLog, Log& objTrcLog);

    // bDisable: frmOwner is disabled while the window is open. Null: the table cannot be used, which was shown.
    frmMultiSelect* open(const SelectedItem& item, const QString& table, QWidget* frmOwner, bool bDisable);
    // The same, and returns when the window is closed and what was taken in it is set.
    void choose(const SelectedItem& item, const QString& table, QWidget* frmOwner);
    void closeAll(); // nothing is taken; call it before the items change

private:
    const clsLibrary& m_library;
    MultiSelectOwner& m_operations;
    QHash<QString, QPointer<frmMultiSelect>> m_windows;
    std::reference_wrapper<Log> m_errorLog = noLog();
    std::reference_wrapper<Log> m_traceLog = noLog();
};
