#include "frmHistory.h"

#include "Journal.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

// The window over a journal of two days.
class HistoryWindow : public ::testing::Test
{
protected:
    HistoryWindow()
    {
        write({{"VQSV1", "Set value", "9", "100", ""}, {"PQB1", "Band", "4", "5", ""}});
        box.clock.advance(24 * 60 * 60 * 1000);
        write({{"SVSEL", "Active set value", "0", "1", ""}});
        open();
    }

    void open()
    {
        window = std::make_unique<frmHistory>(library, journal);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void write(const QVector<JournalParameter>& parameters) const
    {
        JournalEntry entry;
        entry.parameters = parameters;
        const auto id = journal.begin(entry);
        EXPECT_TRUE(id.ok() && journal.complete(id.value(), "complete", {}).ok());
    }

    template <class Widget> Widget& find(const char* name) { return *window->findChild<Widget*>(QLatin1String(name)); }
    QTableView& table() { return find<QTableView>("tblHistory"); }
    QString status() { return find<QLabel>("Label3").text(); }
    QString tags()
    {
        QStringList cells;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            cells << table().model()->index(row, HistoryModel::kTag).data().toString();
        return cells.join('|');
    }

    TestMachine box;
    clsLibrary library{box.context};
    Journal journal{box.context};
    std::unique_ptr<frmHistory> window;
};

TEST_F(HistoryWindow, SearchesSortsAndCopiesByTheKeyboard)
{
    EXPECT_EQ(tags(), u"SVSEL|VQSV1|PQB1");
    EXPECT_EQ(status(), u"Writes: 2, parameters: 3");
    table().setCurrentIndex(table().model()->index(0, HistoryModel::kTag));
    QTest::keyClick(&table(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(tags(), u"PQB1|SVSEL|VQSV1");
    QTest::keyClick(&table(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(window->focusWidget(), "SV");
    EXPECT_EQ(tags(), u"SVSEL|VQSV1");
    table().selectRow(1);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].section('\t', 3, 5), u"Old value\tNew value\tTag");
    EXPECT_EQ(lines[1].section('\t', 3, 5), u"9\t100\tVQSV1");
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(HistoryWindow, ReloadKeepsTheDayAndTellsWhatIsDamaged)
{
    auto& day = find<QComboBox>("Combo1");
    ASSERT_EQ(day.count(), 3);
    day.setCurrentIndex(2);
    EXPECT_EQ(tags(), u"VQSV1|PQB1");
    QFile file(journal.folder() + "/journal-2007-03.jsonl");
    ASSERT_TRUE(file.open(QIODevice::Append) && file.write("half") == 4);
    file.close();
    ASSERT_TRUE(QDir().mkdir(journal.folder() + "/journal-2007-04.jsonl"));
    write({{"NEW", "", "", "1", ""}});
    find<QPushButton>("Command1_1").click();
    EXPECT_EQ(day.currentText(), u"2007/03/05");
    EXPECT_EQ(status(), "Writes: 1, parameters: 2   damaged lines left out: 1   " + journal.folder() +
                            "/journal-2007-04.jsonl cannot be read");
    day.setCurrentIndex(0);
    EXPECT_EQ(tags(), u"NEW|SVSEL|VQSV1|PQB1");
    table().setColumnWidth(HistoryModel::kCause, 222);
    window->close();
    open();
    EXPECT_NEAR(table().columnWidth(HistoryModel::kCause), 222, 1);
}

} // namespace
