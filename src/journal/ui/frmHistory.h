#pragma once

#include "HistoryFilter.h"
#include "HistoryModel.h"
#include "RecordWindow.h"

#include <memory>

class Journal;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class RecordTable;
class clsLibrary;
struct JournalReading;

namespace platform {
class ControlRegistry;
}

// What was written to controllers, as the journal has it: one row for each parameter, the newest write first. The
// journal is read each time the window is opened, and by Reload.
//
// show opens it, as often as wanted; tranForm puts it into the language in use at any time.
class frmHistory : public RecordWindow
{
    Q_OBJECT

public:
    // Both are kept, not owned.
    frmHistory(const clsLibrary& library, const Journal& journal);
    ~frmHistory() override;

    void tranForm();

protected:
    void aboutToShow() override { reload(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setupForm();
    QWidget* setupSearch();
    void connectForm();
    void registerControls();
    void nameFields();
    void reload();
    void fillDays(const JournalReading& reading);
    void chooseDay();
    void sortByCurrentColumn(Qt::SortOrder order);
    void copy();
    void showStatus();

    const Journal& m_journal;
    HistoryModel m_model;
    HistoryFilter m_shown;
    int m_damagedLines = 0;
    QStringList m_unreadable;
    std::unique_ptr<platform::ControlRegistry> m_registry;

    QLabel* m_searchLabel = nullptr; // Label1
    QLineEdit* m_search = nullptr;   // Text1
    QLabel* m_dayLabel = nullptr;    // Label2
    QComboBox* m_day = nullptr;      // Combo1
    QPushButton* m_copy = nullptr;   // Command1(0)
    QPushButton* m_reload = nullptr; // Command1(1)
    QPushButton* m_close = nullptr;  // Command1(2)
    RecordTable* m_table = nullptr;  // tblHistory
    QLabel* m_status = nullptr;      // Label3
};
