#pragma once

#include "HistoryFilter.h"
#include "HistoryModel.h"
#include "WidgetPlacement.h"

#include <QDialog>

#include <memory>

class Journal;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class clsLibrary;
struct JournalReading;

namespace platform {
class ControlRegistry;
}

// What was written to controllers, as the journal has it: one row for each parameter, the newest write first. The
// journal is read each time the window is opened, and by Reload.
//
// show opens it, as often as wanted; tranForm puts it into the language in use at any time.
class frmHistory : public QDialog
{
    Q_OBJECT

public:
    // Both are kept, not owned.
    frmHistory(const clsLibrary& library, const Journal& journal);
    ~frmHistory() override;

    void tranForm();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setupForm();
    QWidget* setupSearch();
    void setupTable();
    void connectForm();
    void registerControls();
    void nameFields();
    void setRowHeight();
    void loadColumns();
    void saveColumns() const;
    void reload();
    void fillDays(const JournalReading& reading);
    void chooseDay();
    void sortByCurrentColumn(Qt::SortOrder order);
    void copy();
    void showStatus();

    const clsLibrary& m_library;
    const Journal& m_journal;
    HistoryModel m_model;
    HistoryFilter m_shown;
    int m_damagedLines = 0;
    QStringList m_unreadable;
    bool m_isLaidOut = false;
    platform::WidgetPlacement m_placement;
    std::unique_ptr<platform::ControlRegistry> m_registry;

    QLabel* m_searchLabel = nullptr; // Label1
    QLineEdit* m_search = nullptr;   // Text1
    QLabel* m_dayLabel = nullptr;    // Label2
    QComboBox* m_day = nullptr;      // Combo1
    QPushButton* m_copy = nullptr;   // Command1(0)
    QPushButton* m_reload = nullptr; // Command1(1)
    QPushButton* m_close = nullptr;  // Command1(2)
    QTableView* m_table = nullptr;   // tblHistory
    QLabel* m_status = nullptr;      // Label3
};
