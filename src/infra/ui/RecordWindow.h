#pragma once

#include "WidgetPlacement.h"

#include <QDialog>

#include <functional>
#include <vector>

class QBoxLayout;
class QPushButton;
class QSortFilterProxyModel;
class RecordTable;
class clsLibrary;

// A window of its own around a table of records. Its place and the widths of its columns are kept; it opens no larger
// than the screen. Escape closes it. The library is kept by reference.
//
// Order of calls in the constructor of a form: its parts, among them addTable; then its registry.
class RecordWindow : public QDialog
{
    Q_OBJECT

protected:
    // size: in widths of a digit and lines of text.
    RecordWindow(const clsLibrary& library, const QString& formName, QSize size);

    // widths: of the columns at first, in widths of a digit.
    RecordTable* addTable(QSortFilterProxyModel& rows, const QString& objectName, std::vector<double> widths);
    // A button of the array "Command1", in the order of the calls, at the end of the row. Enter belongs to the table.
    QPushButton* addButton(QBoxLayout& row, const QString& caption);
    const clsLibrary& library() const { return m_library; }
    // The chosen rows as tab separated lines below their captions; line: of a row of the source model.
    void copyRows(const QString& captions, const std::function<QString(int)>& line) const;

    // The window is about to be seen: not when it only comes back from being minimised.
    virtual void aboutToShow() {}
    virtual void hidden() {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const clsLibrary& m_library;
    platform::WidgetPlacement m_placement;
    QSize m_size;
    RecordTable* m_table = nullptr;
    QSortFilterProxyModel* m_rows = nullptr;
    int m_buttons = 0; // so far
    bool m_isLaidOut = false;
};
