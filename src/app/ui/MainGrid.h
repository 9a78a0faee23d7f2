#pragma once

#include "GridModel.h"

#include <QWidget>

class CellClipboard;
class CellEditor;
class QLabel;
class QStackedWidget;
class StartPage;
class clsLibrary;

namespace platform {
class vaSpread;
}

// The middle of the main window: the parameter grid, or in its place a hint what to do while there is none. Owns the
// cells; what the user does in them goes to the editor and the clipboard that it was connected to.
class MainGrid : public QWidget
{
    Q_OBJECT

public:
    explicit MainGrid(QWidget* parent = nullptr);

    platform::GridModel& cells() { return m_cells; }
    platform::vaSpread& sheet() { return *m_sprMain; }

    void addBar(QWidget& bar); // above the grid
    // Margins and selection colours as the settings have them.
    void applySettings(clsLibrary& library);
    // Both are kept and outlive the grid's events.
    void connectTo(CellEditor& editor, CellClipboard& clipboard);
    void clearCells();
    StartPage& startPage() { return *m_start; }
    // An empty text shows the grid; isStart: the ways on stand below the text.
    void showHint(const QString& text, bool isStart);

private:
    platform::GridModel m_cells;
    QStackedWidget* m_pages;
    platform::vaSpread* m_sprMain;
    QLabel* m_hint;
    StartPage* m_start;
};
