#pragma once

#include <QObject>

class CellEditor;
class QContextMenuEvent;
class QMenu;
class clsLibrary;

namespace platform {
class vaSpread;
}

// The menu of a cell, by the right mouse button or the Menu key: back to the controller's value, write the parameter or
// its block, copy, paste. All parts are kept by reference.
class GridMenu : public QObject
{
    Q_OBJECT

public:
    GridMenu(platform::vaSpread& sheet, CellEditor& editor, const clsLibrary& library);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open(const QContextMenuEvent& event);
    void addCommands(QMenu& menu, int col, int row);

    platform::vaSpread& m_sheet;
    CellEditor& m_editor;
    const clsLibrary& m_library;
};
