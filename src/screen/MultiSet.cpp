#include "MultiSet.h"

#include "Numbers.h"
#include "clsKX.h"

#include <algorithm>

namespace {

constexpr int kFirstTarget = 2; // elements 0 and 1 number and identify the entry
constexpr int kMaxEntries = 1000;
const QString kDecimals = QStringLiteral("DOT");

} // namespace

void MultiSet::apply(const clsData& item, const ChoiceTable& table, const QString& storedValue)
{
    const auto wanted = platform::parseDouble(storedValue);
    if (!wanted || m_running.contains(&item))
        return;
    if (m_running.isEmpty())
        m_applied = 0;
    m_running.insert(&item);
    for (const ChoiceTable::Entry& entry : table.entries()) {
        const auto candidate = platform::parseDouble(entry.data.value(1));
        if (candidate && *candidate == *wanted && ++m_applied <= kMaxEntries)
            applyEntry(entry.settings(kFirstTarget));
    }
    m_running.remove(&item);
}

void MultiSet::applyEntry(const std::vector<EntrySetting>& settings)
{
    const auto isPoint = [](const EntrySetting& setting) {
        return ((setting.isDisplayValue ? u'V' : u'D') + setting.tag).contains(kDecimals);
    };
    const auto point = std::find_if(settings.begin(), settings.end(), isPoint);
    // Display values set before the decimal places were known were scaled with the old ones.
    if (point != settings.end())
        std::for_each(settings.begin(), std::next(point), [this](const EntrySetting& one) { applyOne(one); });
    for (const EntrySetting& setting : settings)
        applyOne(setting);
}

void MultiSet::applyOne(const EntrySetting& setting)
{
    if (setting.isDisplayValue)
        m_owner.setVData(setting.tag, setting.value, true);
    else
        m_owner.setData(setting.tag, setting.value, true);
}
