#include "HistoryFilter.h"

#include "HistoryModel.h"

#include <QSet>

HistoryFilter::HistoryFilter(HistoryModel& history, QObject* parent) : QSortFilterProxyModel(parent), m_history(history)
{
    setSourceModel(&history);
}

void HistoryFilter::setText(const QString& text)
{
    m_text = text;
    invalidateRowsFilter();
}

void HistoryFilter::setDay(std::optional<QDate> day)
{
    m_day = day;
    invalidateRowsFilter();
}

HistoryFilter::Counts HistoryFilter::counts() const
{
    Counts counts;
    QSet<const JournalEntry*> writes;
    for (int i = 0; i < rowCount(); ++i) {
        const HistoryRow& row = m_history.row(mapToSource(index(i, 0)).row());
        writes.insert(row.entry);
        counts.parameters += row.parameter != nullptr ? 1 : 0;
    }
    counts.writes = static_cast<int>(writes.size());
    return counts;
}

bool HistoryFilter::filterAcceptsRow(int number, const QModelIndex& parent) const
{
    Q_UNUSED(parent);
    const HistoryRow& row = m_history.row(number);
    if (m_day && row.entry->begunAt.date() != *m_day)
        return false;
    return m_text.isEmpty() || row.name().contains(m_text, Qt::CaseInsensitive) ||
           row.tag().contains(m_text, Qt::CaseInsensitive);
}

bool HistoryFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return m_history.isLess(left.row(), right.row(), left.column());
}
