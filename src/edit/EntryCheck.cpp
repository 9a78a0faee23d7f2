#include "EntryCheck.h"

#include "EditSession.h"
#include "Interlocks.h"
#include "MessagePresenter.h"
#include "NumberEntry.h"
#include "WrittenItems.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

const QString kTitle = QStringLiteral("KX");

} // namespace

EntryCheck::EntryCheck(EditSession& session, Interlocks& interlocks)
    : m_session(session), m_interlocks(interlocks), m_kx(session.model())
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
    m_session.logItem(item, QStringLiteral("Change"));
    if (item.MType() == ItemType::Data)
        return checkNumber(item, bCascade, entered);
    if (item.MType() == ItemType::Combo && !m_dropped)
        choose(item, shownChoice(item));
    return true;
}

bool EntryCheck::checkNumber(clsData& item, bool bCascade, const QString& entered)
{
    const LimitRange limits = m_session.hasGivenLimits(item) ? item.givenLimits() : item.limits();
    const QString number = plainNumber(entered);
    const EntryRefusal refusal = item.refusalOf(number, limits);
    if (refusal != EntryRefusal::None) {
        report(item, refusal, limits, number);
        m_kx.showItem(item);
        return false;
    }
    item.setVData(number);
    m_session.showChanged(item);
    m_interlocks.afterNumber(item, bCascade);
    return true;
}

// Taken as it is: nothing is marked, nothing follows.
bool EntryCheck::repeats(const clsData& item, const QString& entered) const
{
    const QString number = plainNumber(entered);
    return item.MType() == ItemType::Data && hasValue(m_kx.data(), item) &&
           isSameValue(item.storedOf(number), item.Data()) &&
           item.refusalOf(number, item.limits()) == EntryRefusal::None;
}

bool EntryCheck::repeats(const clsData& item, int choice) const
{
    return hasValue(m_kx.data(), item) && item.comboDatas().value(choice) == item.Data();
}

void EntryCheck::keep(const clsData& item)
{
    m_session.logItem(item, QStringLiteral("Change"));
    m_kx.showItem(item);
}

void EntryCheck::report(const clsData& item, EntryRefusal refusal, const LimitRange& limits, const QString& number)
{
    const TranslateText tran = m_kx.library().translation();
    const QString title = item.DataName().isEmpty()
                              ? u' ' + tran(QStringLiteral("InputRange")) + u' '
                              : QStringLiteral(" ( ") + tran(item.DataName()) + QStringLiteral(" ) ");
    QString text;
    if (refusal == EntryRefusal::EqualInputLimits)
        text = tran(QStringLiteral("It cannot set equivalent."));
    else if (refusal == EntryRefusal::UnclearComma)
        text = tran(QStringLiteral("%1 may have a decimal comma or a comma between thousands: write a point, or no "
                                   "comma."))
                   .arg(number);
    else
        text = tran(QStringLiteral("It is outside the setting range.")) + QStringLiteral("[ ") + limits.text(title) +
               QStringLiteral(" ]");
    m_session.notify(text, MessageStyle::kInformation, kTitle);
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
    m_session.logItem(item, QStringLiteral("Change"));
    item.setComboIdx(choice);
    m_session.showChanged(item);
    m_interlocks.afterChoice(item);
    m_session.logItem(item, QStringLiteral("Changed"));
}

QString EntryCheck::shownText(const clsData& item) const
{
    return m_kx.spread() == nullptr ? item.VData() : m_kx.spread()->cell(item.Row(), item.Col()).text;
}
