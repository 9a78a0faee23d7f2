#pragma once

#include "GridFonts.h"
#include "GridModel.h"

#include <QStyledItemDelegate>

namespace platform {

// Real font metrics for the sizes that a model asks for. The fonts are kept, not owned.
class WidgetTextMeasure final : public TextMeasure
{
public:
    explicit WidgetTextMeasure(GridFonts& fonts) : m_fonts(fonts) {}

    double widthUnits(const QString& text, const CellFont& font) const override;
    double heightPoints(const QString& text, const CellFont& font) const override;

private:
    GridFonts& m_fonts;
};

// Paints and edits the cells of a GridModel: edit, static text, button, combo box.
class SpreadDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit SpreadDelegate(GridFonts& fonts, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

Q_SIGNALS:
    void textEntered(int col, int row, const QString& text);
    void choiceMade(int col, int row, int choice);

private:
    void paintText(QPainter* painter, const QRect& place, Qt::Alignment align, const Cell& cell,
                   const GridFonts::Face& face) const;
    void paintField(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const;
    void paintButton(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell) const;
    void paintComboMark(QPainter* painter, const QStyleOptionViewItem& option) const;

    GridFonts& m_fonts;
};

} // namespace platform
