#include "ReadStatus.h"

#include "GridHint.h"
#include "LinkStatus.h"

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
    status.report.lastFailure = "Timeout";
    status.unread = 3;
    EXPECT_EQ(readStatusText(status, english), u"3 parameters not read (Main: Direct 8000)");
    EXPECT_TRUE(readStatusToolTip(status, english).contains(u"Timeout"));
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
    EXPECT_EQ(linkStatusText(link, english), u"COM2 /dev/ttyUSB0 9600,N,8,1 ASCII slave 7, read only");
    link.open = false;
    link.error = "no permission:\njoin the group dialout";
    EXPECT_EQ(linkStatusText(link, english), u"COM2 is closed: no permission: join the group dialout");
    link.offLine = true;
    EXPECT_TRUE(linkStatusText(link, english).startsWith(u"off-line"));
}

TEST(GridHint, FaultOfTheDefinitionIsSaidInPlaceOfAnEmptyGrid)
{
    const QString fault = "the name is refused";
    EXPECT_EQ(gridHint("KX410", 0, fault, "f.ini", english), fault);
    EXPECT_TRUE(gridHint("KX410", 0, {}, "f.ini", english).contains(u"f.ini describes no parameters"));
    EXPECT_EQ(gridHint("KX410", 5, {}, "f.ini", english), QString());
}

} // namespace
