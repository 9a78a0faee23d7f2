#pragma once

#include "GridFonts.h"
#include "GridModel.h"

#include <QHash>
#include <QPalette>
#include <QSet>
#include <QStyledItemDelegate>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

// Real font metrics for the sizes that a model asks for, as they are without zoom. unitFont: whose average character is
// the unit of widths.
class WidgetTextMeasure final : public TextMeasure
{
public:
    explicit WidgetTextMeasure(std::function<CellFont()> unitFont) : m_unitFont(std::move(unitFont)) {}

    double widthUnits(const QString& text, const CellFont& font) const override;
    double heightPoints(const QString& text, const CellFont& font) const override;

private:
    mutable GridFonts m_fonts;
    std::function<CellFont()> m_unitFont;
};

// Paints and edits the cells of a GridModel: edit, static text, button, combo box. What was entered is kept until the
// view has closed the editor and calls reportEntry: those who hear of it may ask the user something, or load another
// model.
class SpreadDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit SpreadDelegate(GridFonts& fonts, QObject* parent = nullptr);

    // Pale while the cells hold something else than what they are there for.
    void setPale(bool pale) { m_isPale = pale; }
    void setHighlights(const std::vector<CellPlace>& places);
    QColor shown(const QColor& color, const QPalette& palette) const; // as it is painted: pale or not

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

    void reportEntry();                          // once for each entry; nothing when nothing was entered
    bool hasShift() const { return m_hasShift; } // of the last key in an editor, the one that ended it
    QRect comboArrow(const QRect& cell) const;

protected:
    bool eventFilter(QObject* editor, QEvent* event) override;

Q_SIGNALS:
    void textEntered(int col, int row, const QString& text);
    void choiceMade(int col, int row, int choice);

private:
    struct Entry
    {
        int col;
        int row;
        QString text;
        int choice; // of a combo box; -1: text was entered
    };

    QWidget* createComboEditor(QWidget* parent, const QModelIndex& index) const;
    QWidget* createLineEditor(QWidget* parent, const QModelIndex& index) const;
    QRect paintControl(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell, const QColor& back,
                       const QColor& ink) const;
    int paintLamp(QPainter* painter, const QRect& place, bool isOn, const QColor& ink) const;
    int paintSwitch(QPainter* painter, const QRect& place, bool isOn, const QColor& back, const QColor& ink) const;
    void paintTableMark(QPainter* painter, const QRect& place, const QColor& ink) const;
    static void paintCorner(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back);
    void paintFocus(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const;
    void paintText(QPainter* painter, const QRect& place, Qt::Alignment align, const Cell& cell,
                   const GridFonts::Face& face) const;
    void paintField(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const;
    void paintButton(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell, const QColor& back) const;
    void paintComboMark(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const;

    bool isFound(const QModelIndex& index) const;
    QColor backOf(const QStyleOptionViewItem& option, const QModelIndex& index) const;
    const QPalette& paletteOn(const QColor& back, const QPalette& desktop) const;

    GridFonts& m_fonts;
    bool m_isPale = false;
    bool m_hasShift = false;
    QSet<std::pair<int, int>> m_highlights;   // row and column
    mutable QHash<QRgb, QPalette> m_palettes; // by the colour of the cell, for the desktop's palette
    mutable qint64 m_desktopPalette = 0;
    mutable std::optional<Entry> m_entry; // Qt asks for an editor's content by const functions
};

} // namespace platform
