#include "EntryCheck.h"

#include "CellEditor.h"
#include "GridRefresh.h"
#include "Interlocks.h"
#include "ItemLimits.h"
#include "LimitCheck.h"
#include "MessagePresenter.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

const QString kTitle = QStringLiteral("KX");

} // namespace

EntryCheck::EntryCheck(CellEditor& editor, Interlocks& interlocks)
    : m_editor(editor), m_interlocks(interlocks), m_kx(editor.model())
{}

// The check of an item that is being checked already would never end: two items share a cell, or one sets the other.
bool EntryCheck::check(clsData& item, bool bCascade, const QString& entered)
{
    if (m_checking.contains(&item)) {
        m_kx.logError(QStringLiteral("%1 [Datas%2]: an entry of %3 leads back to it; the interlocks end there")
                          .arg(m_kx.entry().screenFile)
                          .arg(item.number())
                          .arg(item.Key()));
        return true;
    }
    m_checking.append(&item);
    const bool taken = checkOnce(item, bCascade, entered);
    m_checking.removeLast();
    return taken;
}

bool EntryCheck::checkOnce(clsData& item, bool bCascade, const QString& entered)
{
    m_editor.logItem(item, QStringLiteral("Change"));
    if (item.MType() == ItemType::Data)
        return checkNumber(item, bCascade, entered);
    if (item.MType() == ItemType::Combo && !m_dropped)
        choose(item, shownChoice(item));
    return true;
}

bool EntryCheck::checkNumber(clsData& item, bool bCascade, const QString& entered)
{
    const TranslateText tran = m_kx.library().translation();
    const LimitCheck limits = LimitCheck::of(item, m_kx, m_limitsGiven.contains(&item));
    // What the controller rounds must not end outside either, or on the other input limit.
    const QString held = item.displayOf(item.storedOf(entered));
    const bool inside = limits.allows(entered) && limits.allows(held);
    if (!inside || isEquivalent(item, held)) {
        m_editor.tell(inside ? tran(QStringLiteral("It cannot set equivalent.")) : limits.refusal(item, tran),
                      MessageStyle::kInformation, kTitle);
        GridRefresh(m_kx).show(item);
        return false;
    }
    item.setVData(entered);
    m_kx.refreshCell(item);
    m_interlocks.afterNumber(item, bCascade);
    return true;
}

// A voltage or current input without a span could not be scaled.
bool EntryCheck::isEquivalent(const clsData& item, const QString& entered) const
{
    const bool isLower = item.Key() == u"VQLIL";
    if ((!isLower && item.Key() != u"VQLIH") || !m_kx.hasVoltageRange())
        return false;
    const clsData* other = m_kx.getDataByTag(isLower ? QStringLiteral("VQLIH") : QStringLiteral("VQLIL"));
    return other != nullptr && compareNumbers(entered, QStringLiteral("="), other->VData());
}

// The choice that the cell shows; the item's own where the cell shows what the item says, or nothing of the list.
int EntryCheck::shownChoice(const clsData& item) const
{
    const QString shown = shownText(item);
    const auto found = shown == item.VData() ? -1 : item.ComboString().split(u'\t').indexOf(shown);
    return found < 0 ? item.ComboIdx() : static_cast<int>(found);
}

void EntryCheck::choose(clsData& item, int choice)
{
    m_editor.logItem(item, QStringLiteral("Change"));
    item.setComboIdx(choice);
    m_kx.refreshCell(item);
    m_interlocks.afterChoice(item);
    m_editor.logItem(item, QStringLiteral("Changed"));
}

QString EntryCheck::shownText(const clsData& item) const
{
    return m_kx.spread() == nullptr ? item.VData() : m_kx.spread()->cell(item.Row(), item.Col()).text;
}
