#pragma once

#include <QDate>
#include <QSortFilterProxyModel>

#include <optional>

class HistoryModel;

// The rows of the history that a person asks for, in the order of a column. The model is kept, not owned.
class HistoryFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit HistoryFilter(HistoryModel& history, QObject* parent = nullptr);

    // Rows whose name or tag holds this text, whatever its case; all for an empty one.
    void setText(const QString& text);
    // Rows of writes that began on this day of the machine's time; nothing: of all days.
    void setDay(std::optional<QDate> day);

    // How many writes and parameters the rows tell of.
    struct Counts
    {
        int writes = 0;
        int parameters = 0;
    };
    Counts counts() const;

protected:
    bool filterAcceptsRow(int number, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    HistoryModel& m_history;
    QString m_text;
    std::optional<QDate> m_day;
};
