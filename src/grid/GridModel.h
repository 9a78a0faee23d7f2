#pragma once

#include "SystemColors.h"
#include "VisibleText.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QString>
#include <QVector>

#include <functional>
#include <utility>

namespace platform {

// Cell types and alignments, with the grid control's own numbers.
enum class CellType { Edit = 1, StaticText = 5, Button = 7, ComboBox = 8 };
enum class HAlign { Left = 0, Right = 1, Center = 2 };
// What a cell is there for: a label or nothing, the value of a parameter, one that is chosen from a table.
enum class CellUse { Decoration, Value, Table };

// What a cell is shown as beside its type.
enum class CellSign {
    None,
    State,  // of two states, that is only shown: a lamp and a word, no button
    Switch, // between two states: the word is the one that is, the button beside it goes to the other
    Table   // a table opens to choose from
};

struct CellFont
{
    QString face;         // empty: the desktop's own face
    double pointSize = 0; // 0: the desktop's own size
    bool bold = false;
    bool operator==(const CellFont&) const = default;
};

// Everything that one cell is. comboIndex is -1 when nothing is selected.
struct Cell
{
    CellType type = CellType::Edit;
    CellUse use = CellUse::Decoration;
    int block = 0;         // number of the block that it belongs to; 0: none
    QString text;          // edit, static text, selected combo text, button caption
    int value = 0;         // button state
    QString toolTip;       // shown when the pointer rests on the cell
    QStringList comboList; // all that it may show: the choices of a combo box, the captions of a button
    ColorRef backColor = 0x80000005;
    ColorRef foreColor = 0x80000008;
    HAlign align = HAlign::Left;
    CellFont font;
    bool locked = false;
    CellSign sign = CellSign::None;
    bool marked = false;   // something is wrong with it: its corner says so, the tool tip what
    bool readOnly = false; // shown like any other, takes no entry
    bool operator==(const Cell&) const = default;

    QString shownText() const { return visibleLines(text); }
    bool acceptsEntry() const { return !locked && !readOnly && (type == CellType::Edit || type == CellType::ComboBox); }
    bool acceptsClick() const { return !locked && !readOnly && type == CellType::Button; }
    bool opensTable() const { return !locked && !readOnly && use == CellUse::Table; }
    bool isOperable() const { return acceptsEntry() || acceptsClick() || opensTable(); }
};

// What a screen reader says of a cell: what it is and holds, then what it takes. Empty: its text, if any.
struct SpokenCell
{
    QString name;
    QString description;
};

// A cell's place, 1-based.
struct CellPlace
{
    int row = 0;
    int col = 0;
    bool operator==(const CellPlace&) const = default;
};

// An inclusive rectangle of cells, 1-based.
struct CellRange
{
    int row = 0;
    int col = 0;
    int row2 = 0;
    int col2 = 0;
    CellRange(int theRow, int theCol) : row(theRow), col(theCol), row2(theRow), col2(theCol) {}
    CellRange(int r1, int c1, int r2, int c2) : row(r1), col(c1), row2(r2), col2(c2) {}
    bool contains(int r, int c) const { return r >= row && r <= row2 && c >= col && c <= col2; }
};

struct CellFrame
{
    CellRange range;
    ColorRef color = 0;
};

// How wide and high a text is in the grid's units. The widget measures with real fonts; this base class estimates (a
// full-width character counts as two), for programs without a window.
class TextMeasure
{
public:
    virtual ~TextMeasure() = default;
    virtual double widthUnits(const QString& text, const CellFont& font) const;   // average characters
    virtual double heightPoints(const QString& text, const CellFont& font) const; // points, 1/72 inch
};

// The parameter grid without a window: cells, frames, sizes, addressed by 1-based row and column (0 is the header).
// Cells outside the grid are ignored by setters and read as a default cell. Sparse: memory follows the cells that were
// set one by one, not rows times columns. Changes made between beginUpdate() and the matching endUpdate() are announced
// once.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int kMaxRows = 100000;
    static constexpr int kMaxCols = 2000;
    static constexpr double kDefaultColWidth = 8;   // average characters
    static constexpr double kDefaultRowHeight = 15; // points

    explicit GridModel(QObject* parent = nullptr);

    // Size. Values are kept within 0..kMaxRows and 0..kMaxCols; cells, frames and sizes outside are dropped.
    int maxRows() const { return m_rows; }
    int maxCols() const { return m_cols; }
    void setMaxRows(int rows);
    void setMaxCols(int cols);

    // Cells.
    const Cell& cell(int row, int col) const;
    QVector<CellPlace> ownCells() const;     // those that were set one by one, in no order
    CellFont fontOf(const Cell& cell) const; // its font with the base face and size filled in
    void resetCells(const Cell& prototype);  // every cell becomes the prototype; frames go
    void setCell(int row, int col, const Cell& cell);
    void setText(int row, int col, const QString& text);
    void setValue(int row, int col, int value);
    void setToolTip(int row, int col, const QString& toolTip);
    void setForeColor(int row, int col, ColorRef color);
    void setBold(int row, int col, bool bold);
    void setLocked(int row, int col, bool locked);

    // Column headers: a letter for a column that was given no other.
    void setColHeader(int col, const QString& text, HAlign align);

    // Frames around areas, in the order in which they were added.
    void addFrame(const CellFrame& frame);
    const QVector<CellFrame>& frames() const { return m_frames; }

    // Sizes: column widths in average characters (column 0 = row header), row heights in points.
    double colWidth(int col) const;
    void setColWidth(int col, double width);
    double rowHeight(int row) const;
    void setRowHeight(int row, double height);
    double maxTextColWidth(int col) const;  // what the widest text of the column needs; its margins for an empty column
    double maxTextRowHeight(int row) const; // what the tallest text of the row needs; the default for an empty row
    void setTextMeasure(const TextMeasure* measure); // null: the estimate

    // Grid-wide settings.
    ColorRef backColor() const { return m_backColor; } // area behind and beside the cells
    void setBackColor(ColorRef color);
    ColorRef grayColor() const { return m_grayColor; } // text of locked cells
    void setGrayColor(ColorRef color);
    void setBaseFace(const QString& face); // of cells that name none
    void setBaseSize(double pointSize);    // of cells without a size; 0: the desktop's
    // What is said of the cell at a row and column; asked each time that somebody wants to know.
    void setSpoken(std::function<SpokenCell(int row, int col)> spoken) { m_spoken = std::move(spoken); }
    bool isShown() const { return m_shown; }
    void setShown(bool shown); // hidden while a model is loaded

    void beginUpdate();
    void endUpdate();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void sizesChanged(); // a column width or row height changed
    void framesChanged();
    void shownChanged(bool shown);

private:
    static quint64 keyOf(int row, int col) { return static_cast<quint64>(row) << 32 | static_cast<quint32>(col); }
    bool inside(int row, int col) const { return row >= 1 && row <= m_rows && col >= 1 && col <= m_cols; }
    Cell& own(int row, int col);
    template <typename Value> void setField(int row, int col, Value Cell::*field, const Value& value);
    void measure() const;
    void changed(int row, int col);
    template <typename Value> void setBase(Value& base, const Value& value);

    int m_rows = 0;
    int m_cols = 0;
    Cell m_prototype;
    QHash<quint64, Cell> m_cells;
    QVector<CellFrame> m_frames;
    struct Header
    {
        QString text;
        HAlign align = HAlign::Center;
    };
    QHash<int, Header> m_colHeaders;
    QHash<int, double> m_colWidths;
    QHash<int, double> m_rowHeights;
    const TextMeasure* m_measure;
    mutable QHash<int, double> m_textWidths;  // by column, valid while m_measured
    mutable QHash<int, double> m_textHeights; // by row
    mutable bool m_measured = false;
    ColorRef m_backColor = 0x80000005;
    ColorRef m_grayColor = 0x808080;
    QString m_baseFace;
    double m_baseSize = 0;
    std::function<SpokenCell(int row, int col)> m_spoken = [](int, int) { return SpokenCell(); };
    bool m_shown = true;
    int m_updateDepth = 0;
    bool m_dirty = false;
};

} // namespace platform
