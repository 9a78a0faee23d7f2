#pragma once

#include <QString>

#include <array>
#include <optional>

class ItemData;
struct ItemLookup;

// Why a parameter has no meaning under the current settings.
enum class LockReason {
    FixedByRange, // a temperature input fixes it
    NoUnit,       // a voltage or current input has no temperature unit
    NotUsedByAlarm
};

// Which parameters have no meaning under the current settings: the input range, the alarm types, the family. Takes
// those settings once, when it is made; serves one refresh.
class LockRules
{
public:
    explicit LockRules(const ItemLookup& items);

    // True: locked; false: unlocked; empty: the cell keeps its lock state.
    std::optional<bool> lockOf(const ItemData& item) const;
    // What locks the item, when it is locked.
    static LockReason reasonOf(const ItemData& item);

private:
    static constexpr int kAlarms = 9;

    std::optional<bool> alarmLock(const QString& tag) const;
    std::optional<bool> eventLock(const QString& tag, const QString& alarmType) const;

    bool m_voltageRange;
    bool m_isKX9;
    std::array<std::optional<QString>, kAlarms + 1> m_alarmTypes; // by alarm number; empty: no such item
};
