#pragma once

#include <QString>

#include <array>
#include <optional>

class clsData;
class clsKX;

// Which parameters have no meaning under the current settings: the input range, the alarm types, the family. Takes
// those settings once, when it is made; serves one refresh.
class LockRules
{
public:
    explicit LockRules(const clsKX& owner);

    // True: locked; false: unlocked; empty: the cell keeps its lock state.
    std::optional<bool> lockOf(const clsData& item) const;

private:
    static constexpr int kAlarms = 9;

    std::optional<bool> alarmLock(int alarm) const;
    std::optional<bool> eventLock(const QString& tag) const;

    bool m_voltageRange;
    bool m_isKX9;
    std::array<std::optional<QString>, kAlarms + 1> m_alarmTypes; // by alarm number; empty: no such item
};
