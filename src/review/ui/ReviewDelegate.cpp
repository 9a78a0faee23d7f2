#include "ReviewDelegate.h"

#include "PaletteColors.h"
#include "ReviewModel.h"

#include <QStyle>
#include <QWidget>

namespace {

constexpr QRgb kWrongText = 0xFFC00000;
constexpr QRgb kGoodText = 0xFF007000;

bool isWrong(ReviewState state)
{
    return state == ReviewState::Conflict || state == ReviewState::Failed || state == ReviewState::NotAccepted ||
           state == ReviewState::Refused;
}

} // namespace

void ReviewDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const auto state = static_cast<ReviewState>(index.data(ReviewModel::kStateRole).toInt());
    option->font.setBold(index.column() == ReviewModel::kValue && state != ReviewState::Accepted);
    if (index.column() != ReviewModel::kState || (!isWrong(state) && state != ReviewState::Accepted))
        return;
    const QColor base = option->palette.color(QPalette::Base);
    option->palette.setColor(QPalette::Text, platform::legible(QColor(isWrong(state) ? kWrongText : kGoodText), base));
    if (option->widget == nullptr)
        return;
    option->icon = option->widget->style()->standardIcon(
        isWrong(state) ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton, option, option->widget);
    option->features |= QStyleOptionViewItem::HasDecoration;
    const int side = option->fontMetrics.height();
    option->decorationSize = QSize(side, side);
}
