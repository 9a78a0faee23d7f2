#include "frmTraffic.h"

#include "../transfer/FaultMatrixFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

namespace {

// The window over one that a transfer disables, and a real read from the simulated controller.
class Traffic : public FaultMatrixFixture
{
protected:
    void open(int mode = 0)
    {
        start(mode);
        for (const char* file : {"EN.txt", "JP.txt"})
            QFile::copy(QStringLiteral(VORLANT_DATA_DIR "/Lang/") + QLatin1String(file),
                        box.path(QStringLiteral("C:\\Vorlant\\Lang")) + u'/' + QLatin1String(file));
        box.context.languageFile = QStringLiteral("EN.txt");
        reopen();
    }
    void reopen()
    {
        traffic = std::make_unique<frmTraffic>(library, trace.filePath());
        traffic->show();
    }
    void read()
    {
        engine->getDataFromKX(nullptr);
        look();
    }
    void look() { box.clock.advance(frmTraffic::kLookMs); }
    void log(int lines)
    {
        for (int i = 0; i < lines; ++i)
            trace.LogWrite(QStringLiteral("(Dirct)S:0142000000800008E3ED"));
    }

    template <class Widget> Widget& find(const char* name) { return *traffic->findChild<Widget*>(QLatin1String(name)); }
    QTableView& table() { return find<QTableView>("tblTraffic"); }
    QAbstractItemModel& rows() { return *table().model(); }
    QString cell(int row, int column) { return rows().index(row, column).data().toString(); }
    QString rowText(int row)
    {
        QStringList cells;
        for (int column = TrafficModel::kDirection; column < TrafficModel::kColumns; ++column)
            cells << cell(row, column);
        return cells.join(u'|');
    }
    QString status() { return find<QLabel>("Label1").text(); }
    int errors()
    {
        int count = 0;
        for (int row = 0; row < rows().rowCount(); ++row)
            count += rows().index(row, 0).data(TrafficModel::kIsErrorRole).toBool() ? 1 : 0;
        return count;
    }

    std::unique_ptr<frmTraffic> traffic;
};

TEST_F(Traffic, ShowsAReadFieldByField)
{
    open();
    EXPECT_TRUE(status().startsWith(u"Nothing was logged yet in ")) << qPrintable(status());
    read();
    ASSERT_EQ(rows().rowCount(), 12) << "six requests and their replies";
    EXPECT_EQ(errors(), 0);
    EXPECT_EQ(rowText(0), u"Sent|1|66 read memory|FBC0|14||CRC OK|");
    EXPECT_EQ(rowText(1), u"Received|1|66 read memory|FBC0|14|4B 58 34 31 30 30 30 30 30 30 2D 31 30 41|CRC OK|");
    EXPECT_EQ(rowText(7), u"Received|1|4 read input registers|0000|1|FF FE|CRC OK|");
    EXPECT_EQ(status(), u"12 lines, 0 with errors");
    table().selectRow(7);
    const QString details = find<QPlainTextEdit>("Text1").toPlainText();
    EXPECT_TRUE(details.contains(u"0000 (30001)")) << qPrintable(details);
    EXPECT_TRUE(details.endsWith(u"01 04 02 FF FE 79 40")) << qPrintable(details);
}

TEST_F(Traffic, ShowsAsciiFramesAsText)
{
    open(1);
    read();
    ASSERT_EQ(rows().rowCount(), 12);
    EXPECT_EQ(errors(), 0);
    EXPECT_EQ(rowText(6), u"Sent|1|4 read input registers|0000|1||LRC OK|");
    table().selectRow(6);
    EXPECT_TRUE(find<QPlainTextEdit>("Text1").toPlainText().contains(u":010400000001FA<CR><LF>"));
}

struct FaultRow
{
    const char* fault;
    const char* remark; // how it begins
    int errors;
    bool waits; // for time-outs, during which the clock runs and the window looks
};

class TrafficFault : public Traffic, public ::testing::WithParamInterface<FaultRow>
{};

// Six attempts at each of six requests; the window shows them meanwhile.
TEST_P(TrafficFault, IsMarkedDuringTheRead)
{
    open();
    setFault(QString::fromLatin1(GetParam().fault));
    int during = 0;
    QObject::connect(&rows(), &QAbstractItemModel::rowsInserted, traffic.get(),
                     [&] { during += engine->isBusy() ? 1 : 0; });
    read();
    EXPECT_EQ(during > 0, GetParam().waits);
    EXPECT_EQ(errors(), GetParam().errors);
    EXPECT_TRUE(cell(1, TrafficModel::kRemark).startsWith(QLatin1String(GetParam().remark))) << qPrintable(rowText(1));
    EXPECT_EQ(rows().index(1, TrafficModel::kDirection).data(Qt::AccessibleTextRole).toString(), u"Error, Received");
    find<QCheckBox>("Check1").click();
    EXPECT_EQ(rows().rowCount(), GetParam().errors);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, TrafficFault,
    ::testing::Values(FaultRow{"corrupt", "CRC wrong: ", 72, false}, FaultRow{"silent", "no reply", 36, true},
                      FaultRow{"exception:6", "the controller refused (exception 6): device busy", 36, true},
                      FaultRow{"truncate", "cut off: ", 36, true}),
    [](const auto& row) { return std::string(row.param.fault).substr(0, 7); });

TEST_F(Traffic, PausesFollowsAndClears)
{
    open();
    log(100);
    look();
    QScrollBar& bar = *table().verticalScrollBar();
    EXPECT_EQ(bar.value(), bar.maximum()) << "the newest line is shown";
    bar.setValue(10);
    log(5);
    look();
    EXPECT_EQ(bar.value(), 10) << "a person reads there";
    find<QPushButton>("Command1_0").click();
    log(3);
    look();
    EXPECT_EQ(rows().rowCount(), 105);
    EXPECT_EQ(status(), u"paused, 3 new lines   105 lines, 0 with errors");
    EXPECT_EQ(find<QPushButton>("Command1_0").text(), u"&Continue");
    find<QPushButton>("Command1_0").click();
    EXPECT_EQ(rows().rowCount(), 108);
    for (const int lines : {4000, 1000}) { // nothing unread is overwritten
        log(lines);
        look();
    }
    EXPECT_EQ(rows().rowCount(), TrafficModel::kMostRows);
    EXPECT_EQ(bar.value(), 0) << "what was looked at is gone";
    find<QPushButton>("Command1_2").click();
    EXPECT_EQ(rows().rowCount(), 0);
    log(5000);
    look();
    EXPECT_EQ(cell(0, TrafficModel::kRemark), u"lines are missing here: the log was overwritten before it was read");
}

TEST_F(Traffic, CopiesTheSelectionOrAll)
{
    open();
    log(3);
    look();
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(u'\n'), 4) << "captions and all rows";
    table().selectRow(1);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(
        QGuiApplication::clipboard()->text(),
        u"Time\tDirection\tSlave\tFunction\tAddress\tCount\tData\tCheck\tRemark\tFrame\n"
        u"2007/03/05 14:07:09.042\tSent\t1\t66 read memory\t8000\t8\t\tCRC OK\t\t01 42 00 00 00 80 00 08 E3 ED\n");
}

TEST_F(Traffic, LineThatSpeaksToTheTerminalIsShown)
{
    open();
    trace.LogWrite(QStringLiteral("\x1b[2J\x07"));
    look();
    EXPECT_TRUE(cell(0, TrafficModel::kRemark).endsWith(u"\\x1b[2J\\x07"))
        << qPrintable(cell(0, TrafficModel::kRemark));
}

TEST_F(Traffic, KeepsLayoutAndSpeaksJapanese)
{
    open();
    log(1);
    look();
    traffic->resize(700, 500);
    table().setColumnWidth(TrafficModel::kFunction, 333);
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_FALSE(traffic->isVisible());
    log(1);
    look();
    EXPECT_EQ(rows().rowCount(), 1) << "nobody looks at it";
    reopen();
    EXPECT_EQ(rows().rowCount(), 2);
    EXPECT_EQ(traffic->size(), QSize(700, 500));
    EXPECT_NEAR(table().columnWidth(TrafficModel::kFunction), 333, 1);
    box.context.languageFile = QStringLiteral("JP.txt");
    traffic->tranForm();
    EXPECT_EQ(traffic->windowTitle(), QString::fromUtf8("通信モニタ"));
    EXPECT_EQ(cell(0, TrafficModel::kFunction), QString::fromUtf8("66 メモリ読出し"));
    EXPECT_EQ(rows().headerData(TrafficModel::kDirection, Qt::Horizontal).toString(), QString::fromUtf8("方向"));
    EXPECT_EQ(find<QPushButton>("Command1_0").text(), QString::fromUtf8("一時停止(&P)"));
}

} // namespace
