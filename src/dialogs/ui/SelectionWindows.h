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

    void Logs(clsLog* objErrLog, clsLog* objTrcLog);

    // bDisable: frmOwner is disabled while the window is open. False: the table cannot be used, which was told.
    bool open(const SelectedItem& item, const QString& table, QWidget* frmOwner, bool bDisable);
    void closeAll(); // nothing is taken; call it before the items change

private:
    const clsLibrary& m_library;
    MultiSelectOwner& m_operations;
    QHash<QString, QPointer<frmMultiSelect>> m_windows;
    clsLog* m_errorLog = nullptr;
    clsLog* m_traceLog = nullptr;
};
