#include "ItemDisplay.h"

#include "Comparison.h"
#include "ItemLookup.h"
#include "Numbers.h"
#include "Tags.h"
#include "TextTools.h"
#include "clsLibrary.h"

#include <algorithm>
#include <optional>

namespace {

constexpr int kMaxReferenceDepth = 20;             // decimal places by way of other items
constexpr int kMaxFormatPlaces = 20;               // more places than any number has digits
constexpr int kVoltagePlaces = 3;                  // of a voltage input, in volts
constexpr int kReferenceMark = 3;                  // characters of "TAG"
const QString kVoltageMark = QStringLiteral("5V"); // in the names of voltage and current inputs

// 10 to the power of places in single precision; 0 for other counts than 0 to 5.
float powerOfTen(int places)
{
    static constexpr float kPowers[] = {1.0F, 10.0F, 100.0F, 1000.0F, 10000.0F, 100000.0F};
    return places < 0 || places > 5 ? 0.0F : kPowers[places];
}

float scaledDown(float value, int places)
{
    const float divisor = powerOfTen(places);
    return divisor == 0.0F ? 0.0F : value / divisor;
}

QString formatFor(int places)
{
    const int shown = std::min(places, kMaxFormatPlaces);
    return shown <= 0 ? QStringLiteral("#0") : QStringLiteral("#0.") + QString(shown, u'0');
}

bool isOn(const ItemData& item)
{
    return isSameNumber(item.Data(), QString::number(item.BitOn()));
}

QString comboText(const ItemData& item)
{
    QString shown;
    for (qsizetype i = 0; i < item.comboDatas().size(); ++i) {
        if (isSameNumber(item.comboDatas()[i], item.Data()))
            shown = item.comboStrings().value(i);
    }
    return shown;
}

bool isFreelyScaled(const QString& tag)
{
    return tag == tags::kInputUpperEntry || tag == tags::kInputLowerEntry || tag == tags::kRangeLower ||
           tag == tags::kRangeUpper;
}

// Empty: the tag decides nothing.
std::optional<int> decimalsByTag(const QString& tag, const ItemLookup& items)
{
    if (tags::isAlarmBand(tag))
        return alarmDecimals(items, items.eventBandDot, tag.at(2).digitValue());
    if (isFreelyScaled(tag) && hasVoltageRange(items))
        return kVoltagePlaces;
    if (tag.size() == tags::kAlarmValues.size() + 1 && tag.contains(tags::kAlarmValues))
        return alarmDecimals(items, items.eventDot, items.library->toLong(tag.mid(4), 0));
    return std::nullopt;
}

int decimalsByReference(const ItemData& item, const ItemLookup& items)
{
    const QString tag = item.decimalsReference();
    if (tag.isEmpty())
        return items.library->toLong(item.decimalsText(), 0);
    const ItemData* reference = items.find(tag);
    if (reference == nullptr)
        return 0;
    const int places = items.library->toLong(displayValue(*reference, items), 0);
    const bool atLeastOne = item.Key() == tags::kBias || item.Key() == tags::kRemoteBias;
    return places == 0 && atLeastOne ? 1 : places;
}

} // namespace

const ChoiceTable& inputTable(const ItemData& item, const ItemLookup& items)
{
    return items.unitSwitch != 0 ? item.inputKTable() : item.inputCTable();
}

QString displayValue(const ItemData& item, const ItemLookup& items)
{
    if (item.showsStoredText())
        return item.Data();
    switch (item.MType()) {
    case ItemType::Bit:
        return isOn(item) ? item.BitOnCap() : item.BitOffCap();
    case ItemType::Combo:
        return comboText(item);
    case ItemType::Multi:
        return item.multiTable().nameOf(item.Data());
    case ItemType::Input:
        return inputTable(item, items).nameOf(item.Data());
    case ItemType::Data:
    case ItemType::String:
        break;
    }
    return displayOf(item, items, item.Data());
}

bool isNamedChoice(const QString& tag)
{
    static const QStringList named{tags::alarmType(1), tags::alarmType(2), tags::alarmType(3), tags::kInputRange,
                                   tags::kDigitalInput};
    return named.contains(tag);
}

bool hasWords(const ItemData& item)
{
    return item.MType() == ItemType::Bit || isNamedChoice(item.Key());
}

QString shownValue(const ItemData& item, const ItemLookup& items, const QString& storedText)
{
    if (item.showsStoredText())
        return storedText;
    for (const ItemChoice& choice : choicesOf(item, items)) {
        if (isSameNumber(choice.stored, storedText))
            return choice.text;
    }
    return item.MType() == ItemType::Data ? displayOf(item, items, storedText) : storedText;
}

QString translatedValue(const ItemData& item, const ItemLookup& items, const QString& storedText,
                        const TranslateText& tran)
{
    const QString shown = shownValue(item, items, storedText);
    return hasWords(item) && !shown.isEmpty() ? tran(shown) : shown;
}

QString nameWithTag(const ItemData& item, const TranslateText& tran)
{
    return texttools::nameWithTag(item.DataName().isEmpty() ? QString() : tran(item.DataName()), item.Key());
}

QString displayOf(const ItemData& item, const ItemLookup& items, const QString& storedText)
{
    const int places = decimalsOf(item, items);
    const clsLibrary& library = *items.library;
    return library.ExFormat(scaledDown(library.toSingle(storedText, 0.0F), places), formatFor(places));
}

// The controller holds whole numbers in one and two bytes; four hold the number as it was entered.
QString storedOf(const ItemData& item, const ItemLookup& items, const QString& displayText)
{
    const int places = decimalsOf(item, items);
    if (powerOfTen(places) == 0.0F)
        return QStringLiteral("0");
    const bool isWhole = item.DataLen() == 1 || item.DataLen() == 2;
    return platform::scaledText(displayText, places, isWhole).value_or(QStringLiteral("0"));
}

// A definition whose places lead back to this item, or through a long chain of others, would never end: it is cut here.
int decimalsOf(const ItemData& item, const ItemLookup& items)
{
    auto& chain = items.resolving;
    if (chain.size() >= kMaxReferenceDepth || std::find(chain.begin(), chain.end(), &item) != chain.end()) {
        items.log.circle(item.number(), item.Key());
        return 0;
    }
    chain.push_back(&item);
    const auto byTag = decimalsByTag(item.Key(), items);
    const int places = byTag ? *byTag : decimalsByReference(item, items);
    chain.pop_back();
    return places;
}

QString formatOf(const ItemData& item, const ItemLookup& items)
{
    return formatFor(decimalsOf(item, items));
}

std::vector<ItemChoice> choicesOf(const ItemData& item, const ItemLookup& items)
{
    std::vector<ItemChoice> choices;
    if (item.MType() == ItemType::Bit)
        choices = {{QString::number(item.BitOn()), item.BitOnCap()},
                   {QString::number(item.BitOff()), item.BitOffCap()}};
    for (qsizetype i = 0; item.MType() == ItemType::Combo && i < item.comboDatas().size(); ++i)
        choices.push_back({item.comboDatas()[i], item.comboStrings().value(i)});
    if (item.MType() != ItemType::Multi && item.MType() != ItemType::Input)
        return choices;
    const ChoiceTable& table = item.MType() == ItemType::Multi ? item.multiTable() : inputTable(item, items);
    for (const ChoiceTable::Entry& entry : table.entries())
        choices.push_back({entry.data.value(1), entry.names.value(0)});
    return choices;
}

bool isAmongChoices(const ItemData& item, const ItemLookup& items)
{
    if (item.MType() == ItemType::Bit)
        return isOn(item) || isSameNumber(item.Data(), QString::number(item.BitOff()));
    const bool isChoice =
        item.MType() == ItemType::Combo || item.MType() == ItemType::Multi || item.MType() == ItemType::Input;
    return !isChoice || !displayValue(item, items).isEmpty();
}

bool hasVoltageRange(const ItemLookup& items)
{
    const ItemData* range = items.find(tags::kInputRange);
    return range != nullptr && displayValue(*range, items).contains(kVoltageMark);
}

QString resolvedTag(const QString& text, const ItemLookup& items)
{
    if (text.size() <= kReferenceMark || text.left(kReferenceMark).compare(u"TAG", Qt::CaseInsensitive) != 0)
        return text;
    const ItemData* item = items.find(text.mid(kReferenceMark));
    return item == nullptr ? QString() : displayValue(*item, items);
}

int alarmDecimals(const ItemLookup& items, const DecimalTable& table, int k)
{
    const ItemData* kind = items.find(tags::alarmType(k));
    const ItemData* point = items.find(tags::kPoint);
    const int row = kind == nullptr ? 0 : items.library->toLong(kind->Data(), 0);
    const int col = point == nullptr ? 0 : items.library->toLong(displayValue(*point, items), 0);
    return table.at(row, col);
}
