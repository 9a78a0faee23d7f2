#pragma once

#include "HeldLooks.h"
#include "LineStatistics.h"
#include "LogReader.h"
#include "RecordWindow.h"
#include "TrafficModel.h"

#include <QSortFilterProxyModel>

#include <functional>
#include <memory>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class RecordTable;
class clsLibrary;

namespace platform {
class ControlRegistry;
class Timer;
} // namespace platform

// What goes over the line, as the trace log has it: one row for each line of the log, the newest last. The window
// looks into the log a few times a second while it is shown.
// It follows the newest line until a person scrolls up, and again from the end of the table on.
//
// show opens it, as often as wanted; tranForm puts it into the language in use at any time.
class frmTraffic : public RecordWindow
{
    Q_OBJECT

public:
    static constexpr int kLookMs = 250;

    // logFile: of the machine; it need not be there yet.
    frmTraffic(const clsLibrary& library, const QString& logFile);
    ~frmTraffic() override;

    void tranForm();
    // What the program is connected to, for the line of its state.
    void setDevice(std::function<QString()> device) { m_device = std::move(device); }

    void setNames(TrafficModel::NameParameters names) { m_model.setNames(std::move(names)); }

    // How the requests have ended, below the table; kept.
    void setStatistics(LineStatistics& statistics) { m_statistics = &statistics; }

protected:
    void aboutToShow() override;
    void hidden() override;

private:
    void setupForm();
    QWidget* setupButtons();
    void connectForm();
    void registerControls();
    void look();
    void add(const LogReader::Look& look);
    void setPaused(bool paused);
    void copy();
    void clear();
    void showErrorsOnly(bool only);
    void showDetails();
    void showStatus();
    void showCounts();
    QString problemText() const;

    std::function<QString()> m_device = [] { return QString(); };
    LineStatistics* m_statistics = nullptr;
    LogReader m_reader;
    TrafficModel m_model;
    QSortFilterProxyModel m_shown;
    HeldLooks m_waiting{TrafficModel::kMostRows}; // while the window is paused
    LogReader::Problem m_problem = LogReader::Problem::None;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    std::unique_ptr<platform::Timer> m_timer;

    QPushButton* m_pause = nullptr;      // Command1(0)
    QPushButton* m_copy = nullptr;       // Command1(1)
    QPushButton* m_clear = nullptr;      // Command1(2)
    QPushButton* m_close = nullptr;      // Command1(3)
    QCheckBox* m_errorsOnly = nullptr;   // Check1
    RecordTable* m_table = nullptr;      // tblTraffic
    QPlainTextEdit* m_details = nullptr; // Text1
    QPushButton* m_reset = nullptr;      // Command1(4)
    QLabel* m_counts = nullptr;          // Label2
    QLabel* m_status = nullptr;          // Label1
};
