#pragma once

#include "BackupReader.h"
#include "BackupsModel.h"
#include "RecordWindow.h"

#include <QSortFilterProxyModel>

#include <functional>
#include <memory>

class QCheckBox;
class QLabel;
class QPushButton;
class RecordTable;
class clsKX;
class clsLibrary;

namespace platform {
class ControlRegistry;
} // namespace platform

// The backups, the newest first, with the number of parameters in which each differs from the grid. One of the model in
// the grid can be loaded: its values that are written to the controller become changes, and nothing is sent.
//
// show opens it, as often as wanted; refresh when the grid holds other values or another model; tranForm puts it into
// the language in use at any time.
class frmBackups : public RecordWindow
{
    Q_OBJECT

public:
    // The values of a backup of the model in the grid.
    using Load = std::function<void(const ParameterSet& set)>;

    frmBackups(clsKX& kx, Load load);
    ~frmBackups() override;

    void tranForm();

public Q_SLOTS:
    // Compares with the grid as it is now; the folder is looked at again when the model is another one. Does nothing
    // while the window is hidden: showing it looks at all.
    void refresh();

protected:
    void aboutToShow() override { reload(); }

private:
    void setupForm();
    QWidget* setupButtons();
    void connectForm();
    void registerControls();
    void reload();
    void compare();
    void select(const QString& file);
    int currentRow() const; // of the model; -1 for none
    bool isLoadable(int row) const;
    void loadCurrent();
    void copy();
    void enableLoad();
    void showStatus();

    clsKX& m_kx;
    Load m_load;
    BackupReader m_reader;
    BackupsModel m_model;
    QSortFilterProxyModel m_shown;
    QString m_listedModel; // that was in the grid when the folder was looked at
    int m_unreadable = 0;
    std::unique_ptr<platform::ControlRegistry> m_registry;

    QPushButton* m_loadButton = nullptr; // Command1(0)
    QPushButton* m_copy = nullptr;       // Command1(1)
    QPushButton* m_reload = nullptr;     // Command1(2)
    QPushButton* m_close = nullptr;      // Command1(3)
    QCheckBox* m_thisModel = nullptr;    // Check1
    RecordTable* m_table = nullptr;      // tblBackups
    QLabel* m_status = nullptr;          // Label1
};
