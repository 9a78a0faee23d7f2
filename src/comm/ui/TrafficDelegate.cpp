#include "TrafficDelegate.h"

#include "PaletteColors.h"
#include "TrafficModel.h"

#include <QFontDatabase>
#include <QStyle>
#include <QWidget>

namespace {

constexpr QRgb kErrorText = 0xFFC00000;

bool holdsBytes(int column)
{
    return column == TrafficModel::kTime || column == TrafficModel::kAddress || column == TrafficModel::kData;
}

QFont fixedFont(const QFont& size)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(size.pointSizeF());
    return font;
}

} // namespace

void TrafficDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (holdsBytes(index.column()))
        option->font = fixedFont(option->font);
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
