#include "ItemLimits.h"

#include "Numbers.h"
#include "clsData.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

const QString kInclusive = QStringLiteral("<=");
const QString kZero = QStringLiteral("0");
const QString kSmallestBand = QStringLiteral("0.1"); // percent
const QString kFullOutput = QStringLiteral("100");   // percent
const QString kVoltageLower = QStringLiteral("-1999");
const QString kVoltageUpper = QStringLiteral("9999");

bool isInputLimit(const QString& tag)
{
    return tag == u"VQLIL" || tag == u"VQLIH";
}

bool isSetValueLimit(const QString& tag)
{
    return tag == u"VQSVL" || tag == u"VQSVH";
}

// Tags whose limits are given as the controller holds them, without a decimal point.
bool isScaledLimit(const QString& tag)
{
    static const QStringList tags{QStringLiteral("VQAL1"),  QStringLiteral("VQAL2"),  QStringLiteral("VQAL3"),
                                  QStringLiteral("VQ1DB"),  QStringLiteral("VQ2DB"),  QStringLiteral("VQ3DB"),
                                  QStringLiteral("VQBIA"),  QStringLiteral("VQRBIA"), QStringLiteral("VQSVUP"),
                                  QStringLiteral("VQSVDWN")};
    return isInputLimit(tag) || tags.contains(tag);
}

} // namespace

bool compareNumbers(const QString& left, const QString& sign, const QString& right)
{
    const auto a = platform::parseSingle(left);
    const auto b = platform::parseSingle(right);
    if (!a || !b)
        return false;
    if (sign == u"=")
        return *a == *b;
    if (sign == u"<>")
        return *a != *b;
    if (sign == u"<")
        return *a < *b;
    if (sign == u"<=" || sign == u"=<")
        return *a <= *b;
    if (sign == u">")
        return *a > *b;
    return (sign == u">=" || sign == u"=>") && *a >= *b;
}

bool isWithinLimits(const clsData& item)
{
    const clsKX& owner = item.owner();
    const QString value = item.VData();
    return compareNumbers(owner.checkTag(item.LimitL()), item.SignL(), value) &&
           compareNumbers(value, item.SignH(), owner.checkTag(item.LimitH()));
}

bool isAllowed(const clsData& item)
{
    const bool isNumber = item.MType() == ItemType::Data && !item.showsStoredText();
    return isNumber ? isWithinLimits(item) : item.isAmongChoices();
}

QStringList limitSources(const clsData& item)
{
    QStringList tags;
    const LimitTexts& texts = item.limitTexts();
    for (const QString& text : {texts.currentLower, texts.currentUpper, texts.definedLower, texts.definedUpper}) {
        if (text.startsWith(u"TAG", Qt::CaseInsensitive))
            tags << text.mid(3);
    }
    const QString tag = item.Key();
    if (tag == u"VQP1")
        tags << QStringLiteral("PIDONOF");
    else if (tag == u"VQODB")
        tags << QStringLiteral("VQP1");
    else if (tag == u"VQOH1")
        tags << QStringLiteral("VQOL1");
    else if (tag == u"VQOL1")
        tags << QStringLiteral("VQOH1");
    return tags;
}

QString ItemLimits::rawLower() const
{
    const LimitTexts& texts = m_item.limitTexts();
    return m_owner.hasVoltageRange() ? texts.currentLower : texts.definedLower;
}

QString ItemLimits::rawUpper() const
{
    const LimitTexts& texts = m_item.limitTexts();
    return m_owner.hasVoltageRange() ? texts.currentUpper : texts.definedUpper;
}

QString ItemLimits::lower() const
{
    const QString tag = m_item.Key();
    if (isSetValueLimit(tag))
        return setValueLimit(true);
    if (isScaledLimit(tag))
        return scaled(isInputLimit(tag) && m_owner.hasVoltageRange() ? kVoltageLower : m_owner.checkTag(rawLower()));
    if (tag == u"VQP1") {
        if (const clsData* onOff = m_owner.getDataByTag(QStringLiteral("PIDONOF")))
            return onOff->ComboIdx() == 0 ? kSmallestBand : kZero;
    } else if (tag == u"VQODB") {
        if (const clsData* band = m_owner.getDataByTag(QStringLiteral("VQP1")))
            return display(*band) == 0.0F ? kSmallestBand : kZero;
    } else if (tag == u"VQOH1") {
        const clsData* low = m_owner.getDataByTag(QStringLiteral("VQOL1"));
        if (low != nullptr && stored(*low) < 0.0F)
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
        return scaled(isInputLimit(tag) && m_owner.hasVoltageRange() ? kVoltageUpper : m_owner.checkTag(rawUpper()));
    if (tag == u"VQP1") {
        const clsData* onOff = m_owner.getDataByTag(QStringLiteral("PIDONOF"));
        if (onOff != nullptr && onOff->ComboIdx() != 0)
            return kZero;
    } else if (tag == u"VQOL1") {
        const clsData* high = m_owner.getDataByTag(QStringLiteral("VQOH1"));
        if (high != nullptr && display(*high) > 100.0F)
            return kFullOutput;
    }
    return rawUpper();
}

QString ItemLimits::setValueLimit(bool lower) const
{
    if (!m_owner.hasVoltageRange())
        return formatted(m_owner.checkTag(lower ? rawLower() : rawUpper()));
    // A voltage input may be scaled downwards: which of the two limits is the lower one shows only in their values.
    const QString first = formatted(m_owner.checkTag(rawLower()));
    const QString second = formatted(m_owner.checkTag(rawUpper()));
    const clsLibrary& library = m_owner.library();
    const bool firstIsSmaller = library.toSingle(first, 0.0F) <= library.toSingle(second, 0.0F);
    return firstIsSmaller == lower ? first : second;
}

QString ItemLimits::lowerSign() const
{
    if (m_item.Key() == u"VQOH1") {
        const clsData* low = m_owner.getDataByTag(QStringLiteral("VQOL1"));
        if (low != nullptr && stored(*low) < 0.0F)
            return kInclusive;
    }
    return m_item.limitTexts().lowerSign;
}

QString ItemLimits::upperSign() const
{
    if (m_item.Key() == u"VQOL1") {
        const clsData* high = m_owner.getDataByTag(QStringLiteral("VQOH1"));
        if (high != nullptr && display(*high) > 100.0F)
            return kInclusive;
    }
    return m_item.limitTexts().upperSign;
}

QString ItemLimits::scaled(const QString& storedText) const
{
    return m_item.displayOf(storedText);
}

QString ItemLimits::formatted(const QString& displayText) const
{
    const clsLibrary& library = m_owner.library();
    return library.ExFormat(library.toSingle(displayText, 0.0F), m_item.getFormatStr());
}

float ItemLimits::display(const clsData& other) const
{
    return m_owner.library().toSingle(other.VData(), 0.0F);
}

float ItemLimits::stored(const clsData& other) const
{
    return m_owner.library().toSingle(other.Data(), 0.0F);
}
