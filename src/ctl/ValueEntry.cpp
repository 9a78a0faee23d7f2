#include "ValueEntry.h"

#include "ItemLimits.h"
#include "ItemStore.h"
#include "LockRules.h"
#include "Numbers.h"
#include "WrittenItems.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

constexpr int kListedChoices = 10;
const QString kUnit = QStringLiteral("SWQCF");
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

QString enterNumber(const clsKX& kx, clsData& item, const QString& text)
{
    const QString trouble = troubleOfNumber(kx, item, text);
    if (!trouble.isEmpty())
        return trouble;
    item.setVData(text);
    if (item.DataLen() > 2)
        return {};
    // The controller holds whole numbers here: what it would round could not be read back.
    const auto whole = platform::parseInt32(item.Data());
    if (!whole || !compareNumbers(item.Data(), QStringLiteral("="), QString::number(*whole)))
        return QStringLiteral("it has more decimal places than %1").arg(item.getDecimals());
    item.setData(QString::number(*whole));
    return {};
}

QString enterChoice(clsData& item, const QString& text)
{
    const std::vector<ItemChoice> choices = item.choices();
    auto found = std::find_if(choices.begin(), choices.end(), [&](const ItemChoice& c) { return c.text == text; });
    if (found == choices.end())
        found = std::find_if(choices.begin(), choices.end(), [&](const ItemChoice& c) {
            return c.stored == text || compareNumbers(c.stored, QStringLiteral("="), text);
        });
    if (found != choices.end()) {
        item.setData(found->stored);
        return {};
    }
    QStringList names;
    for (const ItemChoice& choice : choices)
        names << u'"' + choice.text + u'"';
    const bool all = names.size() <= kListedChoices;
    return QStringLiteral("it is none of %1%2")
        .arg(names.mid(0, kListedChoices).join(u", "), all ? QString() : QStringLiteral(", ..."));
}

} // namespace

QString enterValue(clsKX& kx, clsData& item, const QString& text)
{
    QString trouble = troubleOfItem(kx, item);
    if (!trouble.isEmpty())
        return trouble;
    const QString before = item.Data();
    trouble = item.MType() == ItemType::Data ? enterNumber(kx, item, text) : enterChoice(item, text);
    clsKXAdr* image = kx.ColAdr().find(item.WSection());
    if (trouble.isEmpty() && !storeInImage(item, *image))
        trouble = QStringLiteral("the controller cannot hold it");
    if (!trouble.isEmpty() && item.Data() != before)
        item.setData(before);
    if (item.Key() == kUnit)
        kx.setUnitSwitch(kx.library().toLong(item.Data(), 0));
    return trouble;
}
