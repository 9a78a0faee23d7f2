#include "Interlocks.h"

#include "ItemLimits.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

const QString kInputUpper = QStringLiteral("VQLIH");
const QString kInputLower = QStringLiteral("VQLIL");
const QString kSetLower = QStringLiteral("VQSVL");
const QString kSetUpper = QStringLiteral("VQSVH");
const QString kBand = QStringLiteral("VQP1");
const QString kGap = QStringLiteral("VQODB");
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
    if (tag == u"VQLIZS")
        m_target.setVData(kInputUpper, item.VData(), true);
    else if (tag == u"VQLIZL")
        m_target.setVData(kInputLower, item.VData(), true);
    else if (tag == kInputLower || tag == kInputUpper)
        moveSetValueLimits(item);
    else if (tag == kSetLower && bCascade)
        keepSetValues(item.VData(), true);
    else if (tag == kSetUpper && bCascade)
        keepSetValues(item.VData(), false);
    else if (tag == kBand)
        limitGap(item);
    else if (tag == u"PIDONOF")
        switchBand(item);
    else if (tag == u"SVDOT")
        m_target.redrawAll();
}

// The set values may be given between the input limits, whichever of the two is the larger one.
void Interlocks::moveSetValueLimits(const clsData& changed)
{
    const QString lower = display(kInputLower);
    const QString upper = display(kInputUpper);
    const bool reversed = compareNumbers(upper, kLess, lower);
    swapSetValueLimits(reversed);
    if (lower.isEmpty() || upper.isEmpty())
        return;
    const QString smaller = reversed ? upper : lower;
    const QString larger = reversed ? lower : upper;
    const bool lowerChanged = changed.Key() == kInputLower;
    if (lowerChanged) {
        m_target.setVData(kSetUpper, larger, false);
        m_target.setVData(kSetLower, smaller, true);
    } else {
        m_target.setVData(kSetLower, smaller, false);
        m_target.setVData(kSetUpper, larger, true);
    }
}

void Interlocks::swapSetValueLimits(bool reversed)
{
    m_target.setLimits(kSetLower, reference(reversed ? kInputUpper : kInputLower), reference(kSetUpper));
    m_target.setLimits(kSetUpper, reference(kSetLower), reference(reversed ? kInputLower : kInputUpper));
}

// Moves the set values to the limit that has changed, then back from the one that has not.
void Interlocks::keepSetValues(const QString& bound, bool isLower)
{
    const QString other = display(isLower ? kSetUpper : kSetLower);
    for (const QString& tag : {QStringLiteral("VQSV1"), QStringLiteral("VQSV2")}) {
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
    m_target.setLimits(kGap, switches ? QStringLiteral("0.1") : kZero, QStringLiteral("9.9"));
    if (switches && isZero(display(kGap)))
        m_target.setVData(kGap, QStringLiteral("0.5"), true);
}

void Interlocks::switchBand(const clsData& action)
{
    const bool isPid = isZero(action.Data());
    setBand(isPid, isPid ? QStringLiteral("0.5") : kZero);
}

void Interlocks::afterChoice(const clsData& item)
{
    if (item.Key() == u"SWQCF")
        switchUnit(item);
    else if (item.Key() == u"PIDONOF")
        chooseAction(item);
}

void Interlocks::switchUnit(const clsData& item)
{
    m_kx.setUnitSwitch(m_kx.library().toLong(item.Data(), 0));
    m_target.redrawAll();
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
        m_target.setVData(QStringLiteral("VQI1"), QStringLiteral("120"), true);
        m_target.setVData(QStringLiteral("VQD1"), QStringLiteral("20"), true);
    }
    m_target.setVData(kGap, isPid ? QStringLiteral("0.1") : QStringLiteral("0.5"), true);
}

void Interlocks::setBand(bool isPid, const QString& value)
{
    m_target.setLimits(kBand, isPid ? QStringLiteral("0.1") : kZero, isPid ? QStringLiteral("999.9") : kZero);
    m_target.setVData(kBand, value, true);
}

QString Interlocks::display(const QString& tag) const
{
    const clsData* item = m_kx.getDataByTag(tag);
    return item == nullptr ? QString() : item->VData();
}
