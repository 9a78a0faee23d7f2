#include "CellSpeech.h"

#include "CellHint.h"
#include "ItemUnits.h"
#include "clsKX.h"

namespace {

const QString kPause = QStringLiteral(", ");

QString valueText(const clsKX& kx, const clsData& item, const TranslateText& tran)
{
    if (!item.isKnown())
        return tran(QStringLiteral("not read"));
    return ItemUnits(kx.data()).shown(item, kx.spread()->cell(item.Row(), item.Col()).shownText());
}

QStringList states(const clsData& item, const platform::Cell& cell, const TranslateText& tran)
{
    QStringList states;
    if (item.Edit == EditState::kChanged)
        states << tran(QStringLiteral("changed"));
    if (item.Edit == EditState::kChanged && !item.isReadOnly() && !item.isAllowed())
        states << tran(QStringLiteral("outside its limits or no choice"));
    if (item.sendMark != SendMark::None)
        states << tran(item.sendMark == SendMark::Failed ? QStringLiteral("failed") : QStringLiteral("not accepted"));
    if (cell.locked)
        states << tran(QStringLiteral("locked"));
    return states;
}

QString limitsText(const LimitRange& limits, const TranslateText& tran)
{
    const bool isLowerOut = limits.lowerSign == u"<";
    const bool isUpperOut = limits.upperSign == u"<";
    return tran(isLowerOut && isUpperOut ? QStringLiteral("above %1, below %2")
                : isLowerOut             ? QStringLiteral("above %1, to %2")
                : isUpperOut             ? QStringLiteral("%1 to below %2")
                                         : QStringLiteral("%1 to %2"))
        .arg(limits.lower, limits.upper);
}

QString description(const clsKX& kx, const clsData& item, const TranslateText& tran)
{
    const bool isNumber = item.MType() == ItemType::Data && !item.showsStoredText();
    const QString name = shownName(item, tran);
    const bool isOpen = closedHint(kx, item, name, tran).isEmpty();
    return isNumber && isOpen ? limitsText(item.limits(), tran) : cellHint(kx, item.Col(), item.Row(), tran);
}

QStringList blockName(const clsBlock* block, const TranslateText& tran)
{
    return block == nullptr || block->m_sName.isEmpty() ? QStringList() : QStringList(tran(block->m_sName));
}

} // namespace

platform::SpokenCell spokenCell(const clsKX& kx, int col, int row, const TranslateText& tran)
{
    if (kx.spread() == nullptr)
        return {};
    const platform::Cell& cell = kx.spread()->cell(row, col);
    const clsData* item = kx.getDataByRC(row, col);
    if (item != nullptr) {
        const QStringList parts = blockName(kx.getBlockByNo(item->BlockNo()), tran)
                                  << shownName(*item, tran) << valueText(kx, *item, tran) << states(*item, cell, tran);
        return {parts.join(kPause), description(kx, *item, tran)};
    }
    if (cell.type != platform::CellType::Button)
        return {};
    const QStringList parts = blockName(kx.getBlockByRC(row, col), tran) << cell.shownText();
    return {parts.join(kPause), tran(QStringLiteral("Write this block"))};
}
