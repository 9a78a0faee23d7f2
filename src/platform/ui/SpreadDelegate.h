#pragma once

#include "GridModel.h"

#include <QStyledItemDelegate>

namespace platform {

// The font of a cell on this desktop (Fonts.h).
QFont cellFont(const CellFont& font);

// Real font metrics for the sizes that a model asks for.
class WidgetTextMeasure final : public TextMeasure
{
public:
    double widthUnits(const QString& text, const CellFont& font) const override;
    double heightPoints(const QString& text, const CellFont& font) const override;
};

double pixelsPerUnit();  // an average character
double pixelsPerPoint(); // 1/72 inch

// Paints and edits the cells of a GridModel: edit, static text, button, combo box.
class SpreadDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

Q_SIGNALS:
    void textEntered(int col, int row, const QString& text);
    void choiceMade(int col, int row, int choice);

private:
    void paintField(QPainter* painter, const QStyleOptionViewItem& option) const;
    void paintButton(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell) const;
    void paintComboMark(QPainter* painter, const QStyleOptionViewItem& option) const;
};

} // namespace platform
