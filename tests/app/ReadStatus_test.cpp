#include "ReadStatus.h"

#include "GridHint.h"
#include "LinkStatus.h"
#include "ScreenFixture.h"
#include "WriteStatus.h"

#include <gtest/gtest.h>

namespace {

QString english(const QString& text)
{
    return text;
}

TEST(ReadStatus, NeverCallsAGridReadThatIsNot)
{
    ReadStatus status;
    status.state = MainState::UpToDate;
    status.report.requests = 12;
    status.report.givenUp << "Main: Direct 8000";
    status.report.unreadBlocks = {"Input", "Output"};
    status.report.lastFailure = "Timeout";
    status.unread = 3;
    EXPECT_EQ(readStatusText(status, english), u"3 parameters not read (Input, Output)");
    EXPECT_TRUE(readStatusToolTip(status, english).contains(u"Timeout"));
    status.unread = 1;
    EXPECT_EQ(readStatusText(status, english), u"1 parameter not read (Input, Output)");
    status.report.givenUp.clear();
    status.report.outcome = ReadOutcome::Complete;
    EXPECT_EQ(readStatusToolTip(status, english), QString()) << "it was read in the end";
    status.report.requests = 0;
    status.unread = 0;
    EXPECT_TRUE(readStatusText(status, english).startsWith(u"nothing read"));
    status.offLine = true;
    EXPECT_EQ(readStatusText(status, english), QString()) << "a file's, say";
    status.defaults = true;
    EXPECT_EQ(readStatusText(status, english), u"default values");
}

TEST(LinkStatus, SaysHowOrWhyNot)
{
    LinkStatus link{false, true, true, 2, "/dev/ttyUSB0", "9600", "N,8,1", 1, 7, {}};
    EXPECT_EQ(linkStatusText(link, english), u"COM2 /dev/ttyUSB0 9600,N,8,1 ASCII slave 7, read-only");
    link.open = false;
    link.error = "no permission:\njoin the group dialout";
    EXPECT_EQ(linkStatusText(link, english), u"COM2 is closed: no permission: join the group dialout");
    link.device = "tcp://workshop:4001";
    link.deferred = true;
    EXPECT_EQ(linkStatusText(link, english), u"COM2 tcp://workshop:4001 is connected to with the next request");
    link.offLine = true;
    EXPECT_TRUE(linkStatusText(link, english).startsWith(u"offline"));
}

class WriteStatusText : public ScreenFixture
{};

TEST_F(WriteStatusText, NamesWhatAPersonKnows)
{
    load(screenOf({"Tag=A\nBlockNo=1\nName=Set value 1\nDataInfo=1,0,9,<=,<=,0",
                   "Tag=A2\nBlockNo=1\nName=Set value 2\nDataInfo=1,0,9,<=,<=,0",
                   "Tag=B\nName=Mode\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1"},
                  "CommRaedSection=Main\nKXAddress=8000\nDataLen=1", "BlockMaxCount=1\n") +
             "[BlockInfo1]\nName=Set values\n",
         "[Main]\nReadCmd1=Direct,8000,1\n");
    const QDateTime at(QDate(2026, 3, 14), QTime(14, 7, 9));
    WriteReport report;
    EXPECT_EQ(writeStatusText(report, at, english), QString());
    report.written = 12;
    EXPECT_EQ(writeStatusText(report, at, english), u"12 written 14:07:09");
    EXPECT_EQ(writeStatusDetails(report, kx, english), QString());
    report.notAccepted = {{"A", "25", "30"}, {"B", "1", "0"}};
    report.failed = {{"Main: Direct 8000", "Timeout", {"A", "B"}}, {"Main: SetDigital 1", "Timeout", {}}};
    report.skipped = report.outsideLimits = {"A"};
    report.unsent = {"A", "A2"};
    EXPECT_EQ(writeStatusText(report, at, english),
              u"12 written 14:07:09, 2 not accepted, 2 requests failed, 1 outside their limits, 1 without a value");
    report.failed.resize(1);
    EXPECT_TRUE(writeStatusText(report, at, english).contains(u", 1 request failed, "));
    report.failed.append({"Main: SetDigital 1", "Timeout", {}});
    EXPECT_EQ(
        writeStatusDetails(report, kx, english).toStdString(),
        "Set values: Set value 1 [A]: written 2.5, the controller keeps 3.0\n"
        "Mode [B]: written On, the controller keeps Off\n"
        "Request failed: Set values: Set value 1 [A], Mode [B] (Timeout)\n"
        "Request failed: Main: SetDigital 1: Timeout\n"
        "Set values: Set value 1 [A] is outside its limits or no choice: it is not written until it is corrected\n"
        "Set values: Set value 1 [A] has no value: the controller keeps its own\n"
        "Not known to be in the controller, still changed: Set values: Set value 1 [A], Set value 2 [A2]");
}

TEST(GridHint, FaultOfTheDefinitionIsSaidInPlaceOfAnEmptyGrid)
{
    const QString fault = "the name is refused";
    EXPECT_EQ(gridHint("KX410", 0, fault, "f.ini", english), fault);
    EXPECT_TRUE(gridHint("KX410", 0, {}, "f.ini", english).contains(u"f.ini describes no parameters"));
    EXPECT_EQ(gridHint("KX410", 5, {}, "f.ini", english), QString());
}

} // namespace
