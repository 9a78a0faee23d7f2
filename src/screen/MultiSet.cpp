#include "MultiSet.h"

#include "ChoiceTable.h"
#include "Numbers.h"
#include "clsKX.h"

namespace {

constexpr int kFirstTarget = 2; // elements 0 and 1 number and identify the entry
const QString kStored = QStringLiteral("tagD");
const QString kDisplay = QStringLiteral("tagV");
const QString kDecimals = QStringLiteral("DOT");

} // namespace

void MultiSet::apply(const clsData& item, const ChoiceTable& table, const QString& storedValue)
{
    const auto wanted = platform::parseDouble(storedValue);
    if (!wanted || m_applied.contains(&item))
        return;
    const bool outermost = m_applied.isEmpty();
    m_applied.insert(&item);
    for (const ChoiceTable::Entry& entry : table.entries()) {
        const auto candidate = platform::parseDouble(entry.data.value(1));
        if (candidate && *candidate == *wanted)
            applyEntry(entry.tags, entry.data);
    }
    if (outermost)
        m_applied.clear();
}

void MultiSet::applyEntry(const QStringList& tags, const QStringList& values)
{
    bool restarted = false;
    for (int position = kFirstTarget; position < values.size(); ++position) {
        const QString target = tags.value(position);
        applyOne(target, values[position]);
        // Display values set before the decimal places were known were scaled with the old ones.
        if (!restarted && target.contains(kDecimals)) {
            restarted = true;
            position = kFirstTarget - 1;
        }
    }
}

void MultiSet::applyOne(const QString& target, const QString& value)
{
    if (target.startsWith(kStored))
        m_owner.setData(target.mid(kStored.size()), value, true);
    else if (target.startsWith(kDisplay))
        m_owner.setVData(target.mid(kDisplay.size()), value, true);
}
