#include "ValueEntry.h"

#include "CommandEntry.h"
#include "Comparison.h"
#include "NumberEntry.h"
#include "Numbers.h"
#include "clsKX.h"

#include <algorithm>

namespace {

constexpr int kListedChoices = 10;

QString refusalOfItem(const clsKX& kx, const clsData& item)
{
    if (item.showsStoredText() || !kx.isWritable(item))
        return QStringLiteral("it is only read");
    if (!item.isKnown())
        return QStringLiteral("this controller has no such value");
    if (kx.lockOf(item).value_or(false))
        return QStringLiteral("it is locked under the controller's present settings");
    return {};
}

QString refusalOfNumber(const clsData& item, const QString& text)
{
    if (!platform::parseSingle(text))
        return QStringLiteral("it is no number");
    const LimitRange limits = item.limits();
    switch (item.refusalOf(text, limits)) {
    case EntryRefusal::OutsideLimits:
        return QStringLiteral("it is outside the setting range [ %1 ]").arg(limits.text(u' ' + item.Key() + u' '));
    case EntryRefusal::EqualInputLimits:
        return QStringLiteral("the two input limits cannot be equal");
    case EntryRefusal::UnclearComma:
        return QStringLiteral("its comma may be a decimal comma or part thousands; write a point, or no comma");
    case EntryRefusal::None:
        break;
    }
    return {};
}

QString enterNumber(CommandEntry& entry, clsData& item, const QString& text)
{
    const QString number = plainNumber(text);
    const QString refusal = refusalOfNumber(item, number);
    return refusal.isEmpty() ? entry.enterNumber(item, number) : refusal;
}

QString enterChoice(CommandEntry& entry, clsData& item, const QString& text)
{
    const std::vector<ItemChoice> choices = item.choices();
    auto found = std::find_if(choices.begin(), choices.end(), [&](const ItemChoice& c) { return c.text == text; });
    if (found == choices.end())
        found = std::find_if(choices.begin(), choices.end(),
                             [&](const ItemChoice& c) { return isSameValue(c.stored, text); });
    if (found != choices.end())
        return entry.choose(item, static_cast<int>(found - choices.begin()), found->stored);
    QStringList names;
    for (const ItemChoice& choice : choices)
        names << u'"' + choice.text + u'"';
    const bool all = names.size() <= kListedChoices;
    return QStringLiteral("it is none of %1%2")
        .arg(names.mid(0, kListedChoices).join(u", "), all ? QString() : QStringLiteral(", ..."));
}

} // namespace

QString enterValue(CommandEntry& entry, clsData& item, const QString& text)
{
    const QString refusal = refusalOfItem(entry.model(), item);
    if (!refusal.isEmpty())
        return refusal;
    return item.MType() == ItemType::Data ? enterNumber(entry, item, text) : enterChoice(entry, item, text);
}
