#include "frmTraffic.h"

#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

// The window over the log of a program.
class Traffic : public ::testing::Test
{
protected:
    Traffic()
    {
        trace.setLogPath(box.machine.folders.program());
        trace.setLogFileName(QStringLiteral("Trc.log"));
        open();
    }

    void open()
    {
        traffic = std::make_unique<frmTraffic>(library, trace.filePath());
        traffic->show();
    }
    void log(int lines, const char* line = "(Dirct)S:0142000000800008E3ED")
    {
        for (int i = 0; i < lines; ++i)
            trace.LogWrite(QString::fromLatin1(line));
        box.clock.advance(frmTraffic::kLookMs);
    }

    template <class Widget> Widget& find(const char* name) { return *traffic->findChild<Widget*>(QLatin1String(name)); }
    QTableView& table() { return find<QTableView>("tblTraffic"); }
    QAbstractItemModel& rows() { return *table().model(); }
    QString cell(int row, int column) { return rows().index(row, column).data().toString(); }
    QString status() { return find<QLabel>("Label1").text(); }
    QPushButton& button(int n) { return find<QPushButton>(qPrintable(QStringLiteral("Command1_%1").arg(n))); }
    QString copied()
    {
        QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    }

    TestMachine box;
    clsLibrary library{box.context};
    clsLog trace{box.machine};
    std::unique_ptr<frmTraffic> traffic;
};

TEST_F(Traffic, ShowsFiltersAndCopies)
{
    EXPECT_TRUE(status().startsWith(u"Nothing was logged yet in ")) << qPrintable(status());
    log(2);
    log(1, "(Error)R:");
    log(1, "\x1b[2J");
    EXPECT_EQ(status(), u"lines: 4, with errors: 1");
    EXPECT_EQ(cell(0, TrafficModel::kFunction), u"66 read memory");
    EXPECT_EQ(cell(2, TrafficModel::kRemark), u"no reply");
    EXPECT_EQ(rows().index(2, TrafficModel::kDirection).data(Qt::AccessibleTextRole).toString(), u"Error, Received");
    EXPECT_TRUE(cell(3, TrafficModel::kRemark).endsWith(u"\\x1b[2J")) << "nothing speaks to a terminal";
    EXPECT_EQ(copied().count(u'\n'), 5) << "captions and all rows";
    table().selectRow(1);
    EXPECT_TRUE(find<QPlainTextEdit>("Text1").toPlainText().endsWith(u"01 42 00 00 00 80 00 08 E3 ED"));
    EXPECT_EQ(copied().section(u'\n', 1), u"2007/03/05 14:07:09.042\tSent\t1\t66 read memory\t8000\t\t8\t\tCRC OK\t\t"
                                          u"01 42 00 00 00 80 00 08 E3 ED\n");
    find<QCheckBox>("Check1").click();
    EXPECT_EQ(rows().rowCount(), 1);
}

// A reply that the program rejects stands in the log twice, whether the window looks between the two or not.
TEST_F(Traffic, OneRowForEachFrame)
{
    traffic->setNames([](const QString& stamp, const FrameFields& fields) {
        return fields.address ? stamp.left(4) + QStringLiteral(" VQSV1, VQSV2") : QString();
    });
    const QString rejected = QStringLiteral("R:01420008AA");
    const char* const accepted = "(Scces)R:01420008AA";
    log(1);
    trace.LogWrite(QStringLiteral("(Scces)") + rejected);
    log(1, "(Error)R:01420008AA");
    log(1, accepted);
    log(1, "(Error)R:01420008AA");
    ASSERT_EQ(rows().rowCount(), 4);
    const QStringList directions{cell(0, 1), cell(1, 1), cell(2, 1), cell(3, 1)};
    EXPECT_EQ(directions, (QStringList{"Sent", "Rejected", "Sent again", "Rejected"}));
    EXPECT_EQ(cell(2, TrafficModel::kTime), u"") << "the log has no line of it";
    EXPECT_EQ(cell(2, TrafficModel::kParameters), u"2007 VQSV1, VQSV2");
    EXPECT_EQ(status(), u"lines: 4, with errors: 2");
    table().selectRow(1);
    EXPECT_TRUE(find<QPlainTextEdit>("Text1").toPlainText().contains(u"2007 VQSV1, VQSV2"));
}

TEST_F(Traffic, FollowsPausesClearsAndCloses)
{
    traffic->setDevice([] { return QStringLiteral("tcp://workshop:4001"); });
    log(100);
    QScrollBar& bar = *table().verticalScrollBar();
    EXPECT_EQ(bar.value(), bar.maximum()) << "the newest line is shown";
    bar.setValue(10);
    log(5);
    EXPECT_EQ(bar.value(), 10) << "a person reads there";
    button(0).click();
    log(3);
    EXPECT_EQ(rows().rowCount(), 105);
    EXPECT_EQ(status(), u"tcp://workshop:4001   paused, new lines: 3   lines: 105, with errors: 0");
    EXPECT_EQ(button(0).text(), u"&Continue");
    button(0).click();
    EXPECT_EQ(rows().rowCount(), 108);
    log(4000);
    log(1000);
    EXPECT_EQ(rows().rowCount(), TrafficModel::kMostRows);
    EXPECT_EQ(bar.value(), 0) << "what was looked at is gone";
    button(2).click();
    EXPECT_EQ(rows().rowCount(), 0);
    log(5000);
    EXPECT_EQ(cell(0, TrafficModel::kRemark), u"lines are missing here: the log was overwritten before it was read");

    traffic->resize(700, 500);
    table().setColumnWidth(TrafficModel::kFunction, 333);
    const int before = rows().rowCount();
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_FALSE(traffic->isVisible());
    log(1);
    EXPECT_EQ(rows().rowCount(), before) << "nobody looks at it";
    open();
    EXPECT_EQ(traffic->size(), QSize(700, 500));
    EXPECT_NEAR(table().columnWidth(TrafficModel::kFunction), 333, 1);
    button(3).click();
    EXPECT_FALSE(traffic->isVisible());
}

} // namespace
