#include "TrafficDelegate.h"

#include "Fonts.h"
#include "PaletteColors.h"
#include "TrafficModel.h"

#include <QStyle>
#include <QWidget>

namespace {

constexpr QRgb kErrorText = 0xFFC00000;

bool holdsBytes(int column)
{
    return column == TrafficModel::kTime || column == TrafficModel::kAddress || column == TrafficModel::kData;
}

} // namespace

void TrafficDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (holdsBytes(index.column()))
        option->font = platform::fixedFont(option->font.pointSizeF());
    if (!index.data(TrafficModel::kIsErrorRole).toBool())
        return;
    const QColor base = option->palette.color(QPalette::Base);
    option->palette.setColor(QPalette::Text, platform::legible(QColor(kErrorText), base));
    if (index.column() != TrafficModel::kDirection || option->widget == nullptr)
        return;
    option->icon = option->widget->style()->standardIcon(QStyle::SP_MessageBoxWarning, option, option->widget);
    option->features |= QStyleOptionViewItem::HasDecoration;
    const int side = option->fontMetrics.height();
    option->decorationSize = QSize(side, side);
}
