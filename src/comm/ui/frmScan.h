#pragma once

#include "ComSetSession.h"
#include "ScanModel.h"
#include "WidgetPlacement.h"

#include <QDialog>

#include <memory>
#include <optional>

class QLabel;
class QProgressBar;
class QPushButton;
class RecordTable;
class clsLibrary;

namespace platform {
class ControlRegistry;
}

// The search for controllers: what answers at the port of the communication settings, a row for each, as it is found.
// Shows the search of a ComSetSession and decides nothing itself.
//
// One object, one search: exec begins it and gives Accepted when a controller was chosen to connect to. Closing ends
// the search at once. The session is kept by reference and must outlive the window.
class frmScan : public QDialog
{
    Q_OBJECT

public:
    frmScan(ComSetSession& session, const ComSetFields& fields, const clsLibrary& library, QWidget* parent);
    ~frmScan() override;

    const std::optional<ScanFind>& chosen() const { return m_chosen; }

    // Leaves without a choice, whatever way: Close, Escape.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setupForm();
    QWidget* setupButtons();
    void connectForm();
    void registerControls();
    void tranForm();
    void search();
    void showAsked(const LineSettings& line, int slave, int done, int total);
    void add(const ScanFind& find);
    void showEnd(bool isWhole);
    void enableConnect();
    void connectTo();
    void copy();

    ComSetSession& m_session;
    ComSetFields m_fields;
    const clsLibrary& m_library;
    ScanModel m_model;
    std::optional<ScanFind> m_chosen;
    QString m_portError;
    bool m_isBegun = false;
    platform::WidgetPlacement m_placement;
    std::unique_ptr<platform::ControlRegistry> m_registry;

    RecordTable* m_table = nullptr;   // tblScan
    QProgressBar* m_bar = nullptr;    // ProgressBar1
    QLabel* m_status = nullptr;       // Label1
    QPushButton* m_stop = nullptr;    // Command1(0)
    QPushButton* m_connect = nullptr; // Command1(1)
    QPushButton* m_close = nullptr;   // Command1(2)
};
