#pragma once

#include "GridModel.h"
#include "Log.h"
#include "ModelessOwner.h"
#include "SelectionTable.h"
#include "WidgetPlacement.h"

#include <QDialog>
#include <functional>

#include <memory>

class MultiSelectOwner;
class QLabel;
class QLineEdit;
class QPushButton;
class clsData;
class clsLibrary;

namespace platform {
class ControlRegistry;
class vaSpread;
} // namespace platform

// The parameter that is selected for.
struct SelectedItem
{
    QString tag;
    QString name;
    QString storedValue;

    static SelectedItem of(const clsData& item);
};

// Selects an entry of one table for one parameter; the table's name is the window's ID. Typing searches; a double
// click, Enter and OK take the entry, Escape and Cancel none. The window is gone before an entry takes effect: that may
// ask something, or talk to the controller. showModeless opens it, as often as wanted; the owner outlives it.
class frmMultiSelect : public QDialog
{
    Q_OBJECT

public:
    frmMultiSelect(const clsLibrary& library, MultiSelectOwner& owner, const QString& ID, QWidget* parent = nullptr);
    ~frmMultiSelect() override;

    void Logs(Log& objErrLog, Log& objTrcLog);
    QString ID() const { return m_id; }

    // bDisable: the owner is disabled while the window is open. A window that is open already comes to the front and
    // selects for the item from then on. False: the table cannot be used, which was shown.
    bool showModeless(const SelectedItem& item, QWidget* frmOwner, bool bDisable);

protected:
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setupForm();
    void connectForm();
    void registerControls();
    void fill(const SelectedItem& item);
    void layOut();
    void selectRow(int row);
    int selectedRow() const;
    void onSearch(const QString& text);
    void acceptEntry();
    bool sendToGrid(const QKeyEvent& key);
    bool sendToSearch(const QKeyEvent& key);

    const clsLibrary& m_library;
    MultiSelectOwner& m_operations;
    const QString m_id;
    SelectionTable m_table;
    SelectedItem m_item;
    platform::GridModel m_grid;
    ModelessOwner m_owner;
    platform::WidgetPlacement m_placement;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    std::reference_wrapper<Log> m_errorLog = noLog();
    std::reference_wrapper<Log> m_traceLog = noLog();

    QLabel* m_caption = nullptr;              // Label1
    QLineEdit* m_search = nullptr;            // Text1
    platform::vaSpread* m_sprMulti = nullptr; // sprMulti
    QPushButton* m_ok = nullptr;              // Command1(0)
    QPushButton* m_cancel = nullptr;          // Command1(1)
};
