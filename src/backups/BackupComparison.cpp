#include "BackupComparison.h"

#include "Comparison.h"
#include "ModelData.h"
#include "WrittenItems.h"

BackupComparison::BackupComparison(const ModelData& model) : m_modelString(model.lookup.modelString)
{
    for (const auto& item : model.items) {
        if (isWritten(model, *item))
            m_shown.insert(item->Key(), hasValue(model, *item) ? item->Data() : QString());
    }
}

std::optional<int> BackupComparison::differencesTo(const ParameterSet& set) const
{
    if (set.modelString != m_modelString)
        return std::nullopt;
    int count = 0;
    for (const auto& [tag, value] : writtenPart(set).values)
        count += isSameValue(value, m_shown.value(tag)) ? 0 : 1;
    return count;
}

ParameterSet BackupComparison::writtenPart(const ParameterSet& set) const
{
    ParameterSet part{set.modelString, {}};
    for (const auto& entry : set.values) {
        if (!entry.second.isEmpty() && m_shown.contains(entry.first))
            part.values.append(entry);
    }
    return part;
}
