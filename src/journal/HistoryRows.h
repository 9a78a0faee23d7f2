#pragma once

#include "JournalEntry.h"

#include <vector>

// One line of the history: a parameter of a write, or a write without parameters. Both belong to whoever holds the
// entries.
class HistoryRow
{
public:
    const JournalEntry* entry;
    const JournalParameter* parameter; // null: the write has none

    // English: of the parameter, else of the write; "interrupted" or "going on" for a write that was never completed.
    QString outcome() const;
    // "" without a parameter.
    QString tag() const { return parameter == nullptr ? QString() : parameter->tag; }
    QString name() const { return parameter == nullptr ? QString() : parameter->name; }
    QString held() const { return parameter == nullptr ? QString() : shown(parameter->heldShown, parameter->held); }
    QString value() const { return parameter == nullptr ? QString() : shown(parameter->valueShown, parameter->value); }
    QString unit() const { return parameter == nullptr ? QString() : parameter->unit; }

private:
    static QString shown(const QString& text, const QString& stored) { return text.isEmpty() ? stored : text; }
};

enum class HistoryOrder { OldestFirst, NewestFirst };

// The rows of all writes by the time of their begin; the parameters of one write stay in their order.
std::vector<HistoryRow> historyRows(const std::vector<JournalEntry>& entries, HistoryOrder order);
