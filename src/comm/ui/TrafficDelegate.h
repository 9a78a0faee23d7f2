#pragma once

#include <QStyledItemDelegate>

// Paints the rows of a TrafficModel: those with an error in red and with a mark, bytes in a font of one width.
class TrafficDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
