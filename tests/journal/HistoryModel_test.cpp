#include "HistoryModel.h"

#include "HistoryFilter.h"

#include <gtest/gtest.h>

namespace {

// Two writes, a day apart, and one that was interrupted.
class History : public ::testing::Test
{
protected:
    History()
    {
        model.load(
            {write(5, "complete",
                   {{"VQSV1", "Set value", "9", "100", "accepted", {}, {}, "K"}, {"PQB1", "Band", "x", "5", ""}}),
             write(6, "aborted", {}), write(6, "", {{"RUNSTP", "Run/stop", "10", "\x1b\t1", ""}})});
    }

    static JournalEntry write(int day, const char* outcome, const QVector<JournalParameter>& parameters)
    {
        JournalEntry entry;
        entry.begunAt = QDateTime(QDate(2007, 3, day), QTime(14, 7, 9));
        entry.isInterrupted = *outcome == '\0';
        entry.endedAt = entry.isInterrupted ? QDateTime() : entry.begunAt;
        entry.device = "/dev/ttyUSB0";
        entry.outcome = outcome;
        entry.parameters = parameters;
        return entry;
    }
    QString column(int number) const
    {
        QStringList cells;
        for (int row = 0; row < shown.rowCount(); ++row)
            cells << shown.index(row, number).data().toString();
        return cells.join('|');
    }

    HistoryModel model{[](const QString& english) { return english == "accepted" ? QString("taken") : english; }};
    HistoryFilter shown{model};
};

TEST_F(History, HasTheNewestFirstAndSaysWhatBecameOfIt)
{
    EXPECT_EQ(column(HistoryModel::kTag), u"RUNSTP||VQSV1|PQB1");
    EXPECT_EQ(column(HistoryModel::kOutcome), u"interrupted|aborted|taken|complete");
    EXPECT_EQ(model.copyText(0), u"2007/03/06 14:07:09\tinterrupted\tRun/stop\t10\t\\x1b\\x091\tRUNSTP\t\t"
                                 u"/dev/ttyUSB0, slave 0\t\t");
    const auto isRight = [this](int row) {
        return model.index(row, HistoryModel::kHeld).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight;
    };
    EXPECT_TRUE(isRight(0) && !isRight(3));
    JournalEntry running = write(5, "", {});
    running.isInterrupted = false;
    model.load({running});
    EXPECT_EQ(column(HistoryModel::kOutcome), u"going on");
}

TEST_F(History, FindsByNameTagAndDay)
{
    const std::tuple<const char*, int, const char*, int> rows[] = {
        // text, day (0: all), tags, writes
        {"", 0, "RUNSTP||VQSV1|PQB1", 3},
        {"bAN", 0, "PQB1", 1},
        {"vq", 0, "VQSV1", 1},
        {"s", 0, "RUNSTP|VQSV1", 2},
        {"", 6, "RUNSTP|", 2},
        {"s", 5, "VQSV1", 1},
        {"aborted", 0, "", 0},
        {"", 7, "", 0},
    };
    for (const auto& [text, day, tags, writes] : rows) {
        shown.setText(text);
        shown.setDay(day == 0 ? std::nullopt : std::optional(QDate(2007, 3, day)));
        EXPECT_EQ(column(HistoryModel::kTag), QLatin1String(tags)) << text << day;
        EXPECT_EQ(shown.counts().writes, writes) << text << day;
    }
}

TEST_F(History, SortsNumbersByValueAndTimesByTheJournal)
{
    shown.sort(HistoryModel::kHeld, Qt::AscendingOrder);
    EXPECT_EQ(column(HistoryModel::kHeld), u"9 K|10||x");
    shown.sort(HistoryModel::kTime, Qt::AscendingOrder);
    EXPECT_EQ(column(HistoryModel::kTag), u"VQSV1|PQB1||RUNSTP");
}

} // namespace
