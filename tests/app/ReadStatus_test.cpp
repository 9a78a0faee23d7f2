#include "ReadStatus.h"

#include "LinkStatus.h"

#include <gtest/gtest.h>

namespace {

QString english(const QString& text)
{
    return text;
}

ReadStatus filled()
{
    ReadStatus status;
    status.state = MainState::UpToDate;
    status.readAt = QDateTime(QDate(2007, 3, 5), QTime(14, 7, 9));
    status.report.requests = 12;
    return status;
}

TEST(ReadStatus, NeverCallsAGridReadThatIsNot)
{
    ReadStatus status = filled();
    status.unread = 3;
    status.report.givenUp << QStringLiteral("Main: Direct 8000");
    status.report.lastFailure = QStringLiteral("Timeout");
    EXPECT_EQ(readStatusText(status, english), u"3 parameters not read (Main: Direct 8000)");
    EXPECT_TRUE(readStatusToolTip(status, english).contains(u"Timeout"));
    status = filled();
    status.report.requests = 0;
    EXPECT_TRUE(readStatusText(status, english).startsWith(u"nothing read"));
    status.offLine = true;
    EXPECT_EQ(readStatusText(status, english), QString()) << "a file's, say";
    status.defaults = true;
    EXPECT_EQ(readStatusText(status, english), u"default values");
}

TEST(LinkStatus, SaysHowOrWhyNot)
{
    LinkStatus link{
        false, true, 2,        QStringLiteral("/dev/ttyUSB0"), QStringLiteral("9600"), QStringLiteral("N,8,1"),
        1,     7,    QString()};
    EXPECT_EQ(linkStatusText(link, english), u"COM2 /dev/ttyUSB0 9600,N,8,1 ASCII slave 7");
    link.open = false;
    link.error = QStringLiteral("no permission:\njoin the group dialout");
    EXPECT_EQ(linkStatusText(link, english), u"COM2 is closed: no permission: join the group dialout");
    link.offLine = true;
    EXPECT_TRUE(linkStatusText(link, english).startsWith(u"off-line"));
}

} // namespace
