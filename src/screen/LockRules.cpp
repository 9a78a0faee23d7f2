#include "LockRules.h"

#include "clsData.h"
#include "clsKX.h"

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

bool isAlarmValue(const QString& tag)
{
    return tag == u"VQAL1" || tag == u"VQAL2";
}

bool isAlarmBand(const QString& tag)
{
    return tag == u"VQ1DB" || tag == u"VQ2DB";
}

bool isEvent(const QString& tag)
{
    static const QStringList tags{QStringLiteral("EV1MOD"),  QStringLiteral("EV2MOD"),  QStringLiteral("EV3MOD"),
                                  QStringLiteral("EV1WAIT"), QStringLiteral("EV2WAIT"), QStringLiteral("EV3WAIT")};
    return tags.contains(tag);
}

} // namespace

LockRules::LockRules(const clsKX& owner)
    : m_voltageRange(owner.hasVoltageRange()), m_isKX9(owner.getOptStr(-1) == u"KX9")
{
    for (int alarm = 1; alarm <= kAlarms; ++alarm) {
        const clsData* type = owner.getDataByTag(QStringLiteral("PQKAL%1").arg(alarm));
        if (type != nullptr)
            m_alarmTypes[static_cast<size_t>(alarm)] = type->Data();
    }
}

std::optional<bool> LockRules::lockOf(const clsData& item) const
{
    const QString tag = item.Key();
    if (tag == u"VQLIL" || tag == u"VQLIH" || tag == u"SVDOT")
        return !m_voltageRange;
    if (tag == u"SWQCF")
        return m_voltageRange;
    if (isAlarmValue(tag))
        return alarmLock(tag.at(4).digitValue());
    if (isAlarmBand(tag))
        return alarmLock(tag.at(2).digitValue());
    return isEvent(tag) ? eventLock(tag) : std::nullopt;
}

std::optional<bool> LockRules::alarmLock(int alarm) const
{
    const auto& type = m_alarmTypes.at(static_cast<size_t>(alarm));
    if (!m_isKX9 || !type)
        return {};
    return isPlain(*type);
}

std::optional<bool> LockRules::eventLock(const QString& tag) const
{
    const auto& type = m_alarmTypes.at(static_cast<size_t>(tag.at(2).digitValue()));
    if (!type)
        return {};
    if (isPlain(*type) || (m_isKX9 && *type == kBothDeviations))
        return true;
    return m_isKX9 && *type == kLowerDeviation && (tag == u"EV1MOD" || tag == u"EV2MOD");
}
