#include "HistoryRows.h"

QString HistoryRow::outcome() const
{
    if (entry->isInterrupted)
        return QStringLiteral("interrupted");
    if (!entry->endedAt.isValid())
        return QStringLiteral("going on");
    return parameter == nullptr || parameter->outcome.isEmpty() ? entry->outcome : parameter->outcome;
}

std::vector<HistoryRow> historyRows(const std::vector<JournalEntry>& entries, HistoryOrder order)
{
    std::vector<HistoryRow> rows;
    for (size_t i = 0; i < entries.size(); ++i) {
        const JournalEntry& entry = entries[order == HistoryOrder::OldestFirst ? i : entries.size() - 1 - i];
        for (const JournalParameter& parameter : entry.parameters)
            rows.push_back({&entry, &parameter});
        if (entry.parameters.isEmpty())
            rows.push_back({&entry, nullptr});
    }
    return rows;
}
