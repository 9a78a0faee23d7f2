#include "VisibleText.h"

#include "Table.h"
#include "Terminal.h"

#include <gtest/gtest.h>

namespace {

TEST(VisibleText, ShowsWhatIsNotSeen)
{
    for (const QStringList& row : tableRows("platform/visible.tsv")) {
        EXPECT_EQ(platform::visibleText(row[1]), row[2]) << qPrintable(row[0]);
        EXPECT_EQ(platform::visibleLines(row[1]), row[3] == u"=" ? row[2] : row[3]) << qPrintable(row[0]);
    }
    const QString lone = QString(QChar(0xDC00)) + QChar(0xD800);
    EXPECT_EQ(platform::visibleText(lone), u"<U+DC00><U+D800>");
    EXPECT_EQ(platform::visibleLines(lone), u"<U+DC00><U+D800>");
}

// Qt's warnings hold the texts that it stumbled over.
TEST(VisibleText, WarningsHoldIt)
{
    static QString printed;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) { printed = message; });
    platform::showWarningsVisibly();
    EXPECT_EQ(QStringLiteral("\x1b").arg(QString()), u"\x1b");
    qInstallMessageHandler(before);
    EXPECT_TRUE(printed.contains(u"\\x1b")) << qPrintable(printed);
}

} // namespace
