#pragma once

#include "CellWalk.h"
#include "GridModel.h"
#include "SpreadDelegate.h"

#include <QPersistentModelIndex>
#include <QTableView>

#include <optional>
#include <vector>

class QLineEdit;

namespace platform {

// The parameter grid as a widget: shows a GridModel and reports what a person does in it. It changes no cell by itself.
//
// Keys: typing replaces the text of a cell, F2 and a double click edit it, Escape leaves it as it was. Tab goes through
// the blocks, Enter along the columns, to the next cell that can be operated, from an open editor too; where Enter
// opens a table, and in a grid without such cells, it is reported instead. Ctrl and an arrow go to the next block;
// Home, End, PageUp and PageDown to parameters: see CellWalk. F4, Alt+Down and a click on the arrow open the list of a
// combo box; Space presses a button.
class vaSpread : public QTableView
{
    Q_OBJECT

public:
    explicit vaSpread(QWidget* parent = nullptr);
    ~vaSpread() override;

    void setGrid(GridModel* grid); // kept, not owned
    GridModel* grid() const { return m_grid; }
    void setSelectionColors(ColorRef back, ColorRef fore);
    // Pale while the cells hold something else than what they are there for.
    void setPale(bool pale);
    // Cells that a search has found; replaces those given before.
    void setHighlights(const std::vector<CellPlace>& places);
    void setZoom(int percent); // of fonts, columns and rows; their sizes in the model stay
    // Shows the column headers, by which a person changes the widths of the columns.
    void showColHeaders();
    void setCurrentCell(int col, int row); // a cell outside the grid changes nothing
    // What is typed in an open editor is entered; a list that is open is left as it was. False: the entry is refused.
    [[nodiscard]] bool finishEntry();
    // The entry that editChanged reported is refused: the cell is edited again, with that text.
    void refuseEntry(int col, int row, const QString& text);

Q_SIGNALS:
    void editChanged(int col, int row, const QString& text);
    void comboSelChange(int col, int row, int choice);
    void buttonClicked(int col, int row);
    void dblClick(int col, int row);
    void markClicked(int col, int row);  // the three dots of a table
    void enterPressed(int col, int row); // where it does not go on
    void zoomWanted(int steps);          // larger, below 0 smaller
    void currentCellChanged(int col, int row);
    void copyRequested(const platform::CellRange& range);
    void pasteRequested(const platform::CellRange& range, const QString& text);
    void undoRequested();
    void redoRequested();

public Q_SLOTS:
    // In the text of an open editor; else:
    void requestCopy();  // what is selected
    void requestPaste(); // the text of the clipboard, into what is selected
    void requestUndo();  // of what was entered
    void requestRedo();

protected:
    using QTableView::edit;
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // What is typed at a cell that takes no entry goes nowhere: never to a cell whose text begins like it.
    void keyboardSearch(const QString&) override {}
    void focusInEvent(QFocusEvent* event) override;

private:
    CellFont unitFont() const;
    double pixelsPerUnit();
    void applySizes();
    void paintFrames(QPainter& painter) const;
    void onClicked(const QModelIndex& index);
    void onSectionResized(int section, int pixelWidth);
    void speakCurrent();
    bool handleKey(const QKeyEvent& event, const QModelIndex& at);
    void pressEnter(const QModelIndex& at, WalkStep step);
    static std::optional<CursorAction> moveOf(int key);
    static WalkSide sideOf(CursorAction arrow);
    bool pressButton(const QModelIndex& index);
    bool openList(const QModelIndex& index);
    void showList(const QModelIndex& index);
    QLineEdit* openEditor() const;
    void correct(int col, int row, const QString& text);
    QModelIndex indexOf(const std::optional<CellPlace>& place) const;
    std::optional<CellRange> selectedRange() const;

    GridModel* m_grid = nullptr;
    bool m_isSizing = false;
    bool m_isRefused = false;       // the entry at hand
    QPersistentModelIndex m_edited; // the cell whose editor was opened last
    bool m_opensListOnRelease = false;
    QPoint m_pressedAt;
    GridFonts m_fonts;
    SpreadDelegate m_delegate{m_fonts};
    WidgetTextMeasure m_measure{[this] { return unitFont(); }};
    int m_wheelAngle = 0; // eighths of a degree that have made no step yet
};

} // namespace platform
