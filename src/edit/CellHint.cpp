#include "CellHint.h"

#include "Comparison.h"
#include "ItemUnits.h"
#include "LockRules.h"
#include "Tags.h"
#include "WrittenItems.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

QString lockText(LockReason reason, const TranslateText& tran)
{
    switch (reason) {
    case LockReason::FixedByRange:
        return tran(QStringLiteral("%1: locked by the input range"));
    case LockReason::NoUnit:
        return tran(QStringLiteral("%1: locked, a voltage or current input has no temperature unit"));
    case LockReason::NotUsedByAlarm:
        break;
    }
    return tran(QStringLiteral("%1: locked, the alarm type does not use it"));
}

// As the cell would show it; a limit that this would round stays as it is.
QString formatted(const clsKX& kx, const clsData& item, const QString& limit)
{
    const clsLibrary& library = kx.library();
    const QString shown = library.ExFormat(library.toSingle(limit, 0.0F), item.getFormatStr());
    return isSameNumber(shown, limit) ? shown : limit;
}

// "0.0 <= Set value 1 <= 400.0 C"
QString limitsText(const clsKX& kx, const clsData& item, const QString& name)
{
    LimitRange limits = item.limits();
    limits.lower = formatted(kx, item, limits.lower);
    limits.upper = formatted(kx, item, limits.upper);
    return (limits.text(u' ' + name + u' ') + u' ' + ItemUnits(kx.data()).unitOf(item)).trimmed();
}

QString meaningOf(const clsKX& kx, const clsData& item, const TranslateText& tran)
{
    const QString choices = tran(QStringLiteral("%1: %2"));
    switch (item.MType()) {
    case ItemType::Data:
        return item.showsStoredText() ? shownName(item, tran) : limitsText(kx, item, shownName(item, tran));
    case ItemType::Combo:
        return choices.arg(shownName(item, tran), item.ComboString().split(u'\t').join(QStringLiteral(" / ")));
    case ItemType::Bit:
        return choices.arg(shownName(item, tran),
                           tran(item.BitOnCap()) + QStringLiteral(" / ") + tran(item.BitOffCap()));
    case ItemType::Multi:
    case ItemType::Input:
        return tran(QStringLiteral("%1: double-click or press Enter to choose")).arg(shownName(item, tran));
    case ItemType::String:
        break;
    }
    return shownName(item, tran);
}

} // namespace

QString shownName(const clsData& item, const TranslateText& tran)
{
    return item.DataName().isEmpty() ? item.Key() : tran(item.DataName());
}

QString closedHint(const clsKX& kx, const clsData& item, const QString& subject, const TranslateText& tran)
{
    const platform::Cell& cell = kx.spread()->cell(item.Row(), item.Col());
    if (cell.readOnly || item.MType() == ItemType::String)
        return tran(QStringLiteral("%1: shown only, cannot be changed")).arg(subject);
    return cell.locked ? lockText(LockRules::reasonOf(item), tran).arg(subject) : QString();
}

QString cellHint(const clsKX& kx, int col, int row, const TranslateText& tran)
{
    const clsData* item = kx.getDataByRC(row, col);
    if (item == nullptr || kx.spread() == nullptr)
        return {};
    if (const QString closed = closedHint(kx, *item, shownName(*item, tran), tran); !closed.isEmpty())
        return closed;
    const QString meaning = meaningOf(kx, *item, tran);
    if (item->Key() == tags::kPoint)
        return tran(QStringLiteral("%1; moves the point of all values: 120.0 becomes 12.00 or 1200")).arg(meaning);
    return goesOutAtOnce(kx.data(), *item) ? tran(QStringLiteral("%1; written at once")).arg(meaning) : meaning;
}
