#include "Interlocks.h"

#include "Comparison.h"
#include "Tags.h"
#include "clsKX.h"

namespace {

const QString kZero = QStringLiteral("0");
const QString kLess = QStringLiteral("<");
const QString kGreater = QStringLiteral(">");

QString reference(const QString& tag)
{
    return QStringLiteral("Tag") + tag;
}

bool isZero(const QString& text)
{
    return compareNumbers(text, QStringLiteral("="), kZero);
}

} // namespace

void Interlocks::afterNumber(const clsData& item, bool bCascade)
{
    const QString tag = item.Key();
    if (tag == tags::kInputUpperEntry)
        m_target.setVData(tags::kInputUpper, item.VData(), true);
    else if (tag == tags::kInputLowerEntry)
        m_target.setVData(tags::kInputLower, item.VData(), true);
    else if (tags::isInputLimit(tag))
        moveSetValueLimits(item);
    else if (tag == tags::kSetLower && bCascade)
        keepSetValues(item.VData(), true);
    else if (tag == tags::kSetUpper && bCascade)
        keepSetValues(item.VData(), false);
    else if (tag == tags::kBand)
        limitGap(item);
    else if (tag == tags::kControlAction)
        switchBand(item);
}

// The set values may be given between the input limits, whichever of the two is the larger one.
void Interlocks::moveSetValueLimits(const clsData& changed)
{
    const QString lower = display(tags::kInputLower);
    const QString upper = display(tags::kInputUpper);
    const bool reversed = compareNumbers(upper, kLess, lower);
    swapSetValueLimits(reversed);
    if (lower.isEmpty() || upper.isEmpty())
        return;
    const QString smaller = reversed ? upper : lower;
    const QString larger = reversed ? lower : upper;
    const bool lowerChanged = changed.Key() == tags::kInputLower;
    if (lowerChanged) {
        m_target.setVData(tags::kSetUpper, larger, false);
        m_target.setVData(tags::kSetLower, smaller, true);
    } else {
        m_target.setVData(tags::kSetLower, smaller, false);
        m_target.setVData(tags::kSetUpper, larger, true);
    }
}

void Interlocks::swapSetValueLimits(bool reversed)
{
    m_target.setLimits(tags::kSetLower, reference(reversed ? tags::kInputUpper : tags::kInputLower),
                       reference(tags::kSetUpper));
    m_target.setLimits(tags::kSetUpper, reference(tags::kSetLower),
                       reference(reversed ? tags::kInputLower : tags::kInputUpper));
}

// Moves the set values to the limit that has changed, then back from the one that has not.
void Interlocks::keepSetValues(const QString& bound, bool isLower)
{
    const QString other = display(isLower ? tags::kSetUpper : tags::kSetLower);
    for (const QString& tag : {tags::kSetValue1, tags::kSetValue2}) {
        move(tag, isLower ? kLess : kGreater, bound);
        move(tag, isLower ? kGreater : kLess, other);
    }
}

void Interlocks::move(const QString& tag, const QString& sign, const QString& bound)
{
    if (compareNumbers(display(tag), sign, bound))
        m_target.setVData(tag, bound, true);
}

// Without a proportional band the output switches, and needs a gap to switch in.
void Interlocks::limitGap(const clsData& band)
{
    const bool switches = isZero(band.VData());
    m_target.setLimits(tags::kGap, switches ? QStringLiteral("0.1") : kZero, QStringLiteral("9.9"));
    if (switches && isZero(display(tags::kGap)))
        m_target.setVData(tags::kGap, QStringLiteral("0.5"), true);
}

void Interlocks::switchBand(const clsData& action)
{
    const bool isPid = isZero(action.Data());
    setBand(isPid, isPid ? QStringLiteral("0.5") : kZero);
}

void Interlocks::afterChoice(const clsData& item)
{
    if (item.Key() == tags::kUnit)
        switchUnit(item);
    else if (item.Key() == tags::kControlAction)
        chooseAction(item);
}

void Interlocks::switchUnit(const clsData& item)
{
    m_kx.followUnit(item);
}

void Interlocks::chooseAction(const clsData& action)
{
    const bool isPid = isZero(action.Data());
    if (m_kx.getOptStr(-1) == u"KX9")
        chooseActionKX9(isPid);
    else
        setBand(isPid, isPid ? QStringLiteral("0.5") : QStringLiteral("0.0"));
}

void Interlocks::chooseActionKX9(bool isPid)
{
    setBand(isPid, isPid ? QStringLiteral("3.0") : kZero);
    if (isPid) {
        m_target.setVData(tags::kIntegral, QStringLiteral("120"), true);
        m_target.setVData(tags::kDerivative, QStringLiteral("20"), true);
    }
    m_target.setVData(tags::kGap, isPid ? QStringLiteral("0.1") : QStringLiteral("0.5"), true);
}

void Interlocks::setBand(bool isPid, const QString& value)
{
    m_target.setLimits(tags::kBand, isPid ? QStringLiteral("0.1") : kZero, isPid ? QStringLiteral("999.9") : kZero);
    m_target.setVData(tags::kBand, value, true);
}

QString Interlocks::display(const QString& tag) const
{
    const clsData* item = m_kx.getDataByTag(tag);
    return item == nullptr ? QString() : item->VData();
}
