#include "LockRules.h"

#include "ItemDisplay.h"
#include "ItemLookup.h"
#include "OptionExpression.h"
#include "Tags.h"

#include <QStringList>

namespace {

// Alarm types from here on (as text) are not compared with a value: no limit, no dead-band, no event settings.
const QString kFirstPlainType = QStringLiteral("4");
const QString kLowerDeviation = QStringLiteral("2");
const QString kBothDeviations = QStringLiteral("3");

bool isPlain(const QString& alarmType)
{
    return alarmType >= kFirstPlainType;
}

bool isEventMode(const QString& tag)
{
    return tag == u"EV1MOD" || tag == u"EV2MOD";
}

bool isEvent(const QString& tag)
{
    static const QStringList others{QStringLiteral("EV3MOD"), QStringLiteral("EV1WAIT"), QStringLiteral("EV2WAIT"),
                                    QStringLiteral("EV3WAIT")};
    return isEventMode(tag) || others.contains(tag);
}

// The alarm that the parameter belongs to; 0 for what no alarm type locks.
int alarmOf(const QString& tag)
{
    if (tag == tags::kAlarmValues + u'1' || tag == tags::kAlarmValues + u'2')
        return tag.at(4).digitValue();
    if (tag == tags::kAlarmBand1 || tag == tags::kAlarmBand2 || isEvent(tag))
        return tag.at(2).digitValue();
    return 0;
}

} // namespace

LockRules::LockRules(const ItemLookup& items)
    : m_voltageRange(hasVoltageRange(items)), m_isKX9(optionText(items.modelString, -1) == u"KX9")
{
    for (int alarm = 1; alarm <= kAlarms; ++alarm) {
        if (const ItemData* type = items.find(tags::alarmType(alarm)))
            m_alarmTypes[static_cast<size_t>(alarm)] = type->Data();
    }
}

LockReason LockRules::reasonOf(const ItemData& item)
{
    if (tags::isInputLimit(item.Key()) || item.Key() == tags::kPoint)
        return LockReason::FixedByRange;
    return item.Key() == tags::kUnit ? LockReason::NoUnit : LockReason::NotUsedByAlarm;
}

std::optional<bool> LockRules::lockOf(const ItemData& item) const
{
    switch (reasonOf(item)) {
    case LockReason::FixedByRange:
        return !m_voltageRange;
    case LockReason::NoUnit:
        return m_voltageRange;
    case LockReason::NotUsedByAlarm:
        break;
    }
    return alarmLock(item.Key());
}

std::optional<bool> LockRules::alarmLock(const QString& tag) const
{
    const auto& type = m_alarmTypes.at(static_cast<size_t>(alarmOf(tag)));
    if (!type)
        return {};
    if (isEvent(tag))
        return eventLock(tag, *type);
    return m_isKX9 ? std::optional(isPlain(*type)) : std::nullopt;
}

std::optional<bool> LockRules::eventLock(const QString& tag, const QString& alarmType) const
{
    if (isPlain(alarmType) || (m_isKX9 && alarmType == kBothDeviations))
        return true;
    return m_isKX9 && alarmType == kLowerDeviation && isEventMode(tag);
}
