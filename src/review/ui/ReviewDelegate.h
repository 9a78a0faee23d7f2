#pragma once

#include <QStyledItemDelegate>

// Paints the rows of a ReviewModel: the new value in bold, what needs a person in red and with a mark.
class ReviewDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
