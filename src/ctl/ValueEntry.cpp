#include "ValueEntry.h"

#include "CommandEntry.h"
#include "ItemLimits.h"
#include "LockRules.h"
#include "Numbers.h"
#include "WrittenItems.h"
#include "clsKX.h"

#include <algorithm>

namespace {

constexpr int kListedChoices = 10;
const QString kUpperInput = QStringLiteral("VQLIH");
const QString kLowerInput = QStringLiteral("VQLIL");

QString troubleOfItem(const clsKX& kx, const clsData& item)
{
    if (item.showsStoredText() || !isWritten(kx, item))
        return QStringLiteral("it is only read");
    if (!item.isKnown())
        return QStringLiteral("this controller has no such value");
    if (LockRules(kx).lockOf(item).value_or(false))
        return QStringLiteral("it is locked under the controller's present settings");
    return {};
}

// A voltage input may be scaled upwards or downwards, but not onto one point.
bool isEqualInputLimit(const clsKX& kx, const clsData& item, const QString& text)
{
    const bool isUpper = item.Key() == kUpperInput;
    if (!kx.hasVoltageRange() || (!isUpper && item.Key() != kLowerInput))
        return false;
    const clsData* other = kx.getDataByTag(isUpper ? kLowerInput : kUpperInput);
    return other != nullptr && compareNumbers(text, QStringLiteral("="), other->VData());
}

QString troubleOfNumber(const clsKX& kx, const clsData& item, const QString& text)
{
    if (!platform::parseSingle(text))
        return QStringLiteral("it is no number");
    const QString lower = kx.checkTag(item.LimitL());
    const QString upper = kx.checkTag(item.LimitH());
    if (!compareNumbers(lower, item.SignL(), text) || !compareNumbers(text, item.SignH(), upper))
        return QStringLiteral("it is outside the setting range [ %1 %2 %3 %4 %5 ]")
            .arg(lower, item.SignL(), item.Key(), item.SignH(), upper);
    if (isEqualInputLimit(kx, item, text))
        return QStringLiteral("the two input limits cannot be equal");
    return {};
}

QString enterNumber(CommandEntry& entry, clsData& item, const QString& text)
{
    const QString trouble = troubleOfNumber(entry.model(), item, text);
    return trouble.isEmpty() ? entry.enterNumber(item, text) : trouble;
}

QString enterChoice(CommandEntry& entry, clsData& item, const QString& text)
{
    const std::vector<ItemChoice> choices = item.choices();
    auto found = std::find_if(choices.begin(), choices.end(), [&](const ItemChoice& c) { return c.text == text; });
    if (found == choices.end())
        found = std::find_if(choices.begin(), choices.end(), [&](const ItemChoice& c) {
            return c.stored == text || compareNumbers(c.stored, QStringLiteral("="), text);
        });
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
    const QString trouble = troubleOfItem(entry.model(), item);
    if (!trouble.isEmpty())
        return trouble;
    return item.MType() == ItemType::Data ? enterNumber(entry, item, text) : enterChoice(entry, item, text);
}
