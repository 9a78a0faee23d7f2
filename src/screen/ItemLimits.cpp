#include "ItemLimits.h"

#include "ItemDisplay.h"
#include "ItemLookup.h"
#include "NumberEntry.h"
#include "Tags.h"
#include "clsLibrary.h"

namespace {

const QString kInclusive = QStringLiteral("<=");
const QString kZero = QStringLiteral("0");
const QString kSmallestBand = QStringLiteral("0.1"); // percent
const QString kFullOutput = QStringLiteral("100");   // percent
const QString kVoltageLower = QStringLiteral("-1999");
const QString kVoltageUpper = QStringLiteral("9999");

bool isSetValueLimit(const QString& tag)
{
    return tag == tags::kSetLower || tag == tags::kSetUpper;
}

// Tags whose limits are given as the controller holds them, without a decimal point.
bool isScaledLimit(const QString& tag)
{
    static const QStringList scaled{tags::kAlarmValues + u'1',
                                    tags::kAlarmValues + u'2',
                                    tags::kAlarmValues + u'3',
                                    tags::kBias,
                                    tags::kRemoteBias,
                                    tags::kRampUp,
                                    tags::kRampDown};
    return tags::isInputLimit(tag) || tags::isAlarmBand(tag) || scaled.contains(tag);
}

// A voltage or current input without a span could not be scaled.
bool isOtherInputLimit(const ItemData& item, const ItemLookup& items, const QString& displayText)
{
    if (!tags::isInputLimit(item.Key()) || !hasVoltageRange(items))
        return false;
    const ItemData* other = items.find(item.Key() == tags::kInputLower ? tags::kInputUpper : tags::kInputLower);
    return other != nullptr && compareNumbers(displayText, QStringLiteral("="), displayValue(*other, items));
}

} // namespace

bool LimitRange::allows(const QString& displayText) const
{
    return compareNumbers(lower, lowerSign, displayText) && compareNumbers(displayText, upperSign, upper);
}

LimitRange ItemLimits::range() const
{
    return {resolvedTag(lower(), m_items), lowerSign(), upperSign(), resolvedTag(upper(), m_items)};
}

LimitRange ItemLimits::given() const
{
    const LimitTexts& texts = m_item.limitTexts();
    return {resolvedTag(texts.currentLower, m_items), lowerSign(), upperSign(),
            resolvedTag(texts.currentUpper, m_items)};
}

bool isAllowed(const ItemData& item, const ItemLookup& items)
{
    const bool isNumber = item.MType() == ItemType::Data && !item.showsStoredText();
    return isNumber ? ItemLimits(item, items).range().allows(displayValue(item, items)) : isAmongChoices(item, items);
}

EntryRefusal refusalOf(const ItemData& item, const ItemLookup& items, const LimitRange& limits,
                       const QString& displayText)
{
    if (isUnclearNumber(displayText))
        return EntryRefusal::UnclearComma;
    // What the controller rounds must not end outside either, or on the other input limit.
    const QString held = displayOf(item, items, storedOf(item, items, displayText));
    if (!limits.allows(displayText) || !limits.allows(held))
        return EntryRefusal::OutsideLimits;
    return isOtherInputLimit(item, items, held) ? EntryRefusal::EqualInputLimits : EntryRefusal::None;
}

QStringList limitSources(const ItemData& item)
{
    QStringList sources;
    const LimitTexts& texts = item.limitTexts();
    for (const QString& text : {texts.currentLower, texts.currentUpper, texts.definedLower, texts.definedUpper}) {
        if (text.startsWith(u"TAG", Qt::CaseInsensitive))
            sources << text.mid(3);
    }
    const QString tag = item.Key();
    if (tag == tags::kBand)
        sources << tags::kControlAction;
    else if (tag == tags::kGap)
        sources << tags::kBand;
    else if (tag == tags::kOutputUpper)
        sources << tags::kOutputLower;
    else if (tag == tags::kOutputLower)
        sources << tags::kOutputUpper;
    return sources;
}

const QString& ItemLimits::rawLower() const
{
    const LimitTexts& texts = m_item.limitTexts();
    return hasVoltageRange(m_items) ? texts.currentLower : texts.definedLower;
}

const QString& ItemLimits::rawUpper() const
{
    const LimitTexts& texts = m_item.limitTexts();
    return hasVoltageRange(m_items) ? texts.currentUpper : texts.definedUpper;
}

QString ItemLimits::lower() const
{
    const QString tag = m_item.Key();
    if (isSetValueLimit(tag))
        return setValueLimit(true);
    if (isScaledLimit(tag))
        return stored(tags::isInputLimit(tag) && hasVoltageRange(m_items) ? kVoltageLower : rawLower());
    if (tag == tags::kBand) {
        if (const ItemData* onOff = m_items.find(tags::kControlAction))
            return onOff->ComboIdx() == 0 ? kSmallestBand : kZero;
    } else if (tag == tags::kGap) {
        if (const ItemData* band = m_items.find(tags::kBand))
            return m_items.library->toSingle(displayValue(*band, m_items), 0.0F) == 0.0F ? kSmallestBand : kZero;
    } else if (tag == tags::kOutputUpper && isOutputNegative()) {
        return kZero;
    }
    return rawLower();
}

QString ItemLimits::upper() const
{
    const QString tag = m_item.Key();
    if (isSetValueLimit(tag))
        return setValueLimit(false);
    if (isScaledLimit(tag))
        return stored(tags::isInputLimit(tag) && hasVoltageRange(m_items) ? kVoltageUpper : rawUpper());
    if (tag == tags::kBand) {
        const ItemData* onOff = m_items.find(tags::kControlAction);
        if (onOff != nullptr && onOff->ComboIdx() != 0)
            return kZero;
    } else if (tag == tags::kOutputLower && isOutputAboveFull()) {
        return kFullOutput;
    }
    return rawUpper();
}

QString ItemLimits::stored(const QString& limit) const
{
    return displayOf(m_item, m_items, resolvedTag(limit, m_items));
}

QString ItemLimits::setValueLimit(bool lower) const
{
    if (!hasVoltageRange(m_items))
        return formatted(lower ? rawLower() : rawUpper());
    // A voltage input may be scaled downwards: which of the two limits is the lower one shows only in their values.
    const QString first = formatted(rawLower());
    const QString second = formatted(rawUpper());
    const clsLibrary& library = *m_items.library;
    const bool firstIsSmaller = library.toSingle(first, 0.0F) <= library.toSingle(second, 0.0F);
    return firstIsSmaller == lower ? first : second;
}

QString ItemLimits::lowerSign() const
{
    const bool isInclusive = m_item.Key() == tags::kOutputUpper && isOutputNegative();
    return isInclusive ? kInclusive : m_item.limitTexts().lowerSign;
}

QString ItemLimits::upperSign() const
{
    const bool isInclusive = m_item.Key() == tags::kOutputLower && isOutputAboveFull();
    return isInclusive ? kInclusive : m_item.limitTexts().upperSign;
}

QString ItemLimits::formatted(const QString& limit) const
{
    const clsLibrary& library = *m_items.library;
    return library.ExFormat(library.toSingle(resolvedTag(limit, m_items), 0.0F), formatOf(m_item, m_items));
}

bool ItemLimits::isOutputNegative() const
{
    const ItemData* low = m_items.find(tags::kOutputLower);
    return low != nullptr && m_items.library->toSingle(low->Data(), 0.0F) < 0.0F;
}

bool ItemLimits::isOutputAboveFull() const
{
    const ItemData* high = m_items.find(tags::kOutputUpper);
    return high != nullptr && m_items.library->toSingle(displayValue(*high, m_items), 0.0F) > 100.0F;
}
