#include "TextWidth.h"
#include "VisibleText.h"

#include "Table.h"
#include "Terminal.h"

#include <gtest/gtest.h>

namespace {

TEST(VisibleText, ShowsWhatIsNotSeen)
{
    QList<QStringList> rows = tableRows("platform/visible.tsv");
    rows << QStringList{"halves of a pair", QString(QChar(0xDC00)) + QChar(0xD800), "<U+DC00><U+D800>", "="};
    for (const QStringList& row : rows) {
        EXPECT_EQ(platform::visibleText(row[1]), row[2]) << qPrintable(row[0]);
        EXPECT_EQ(platform::visibleLines(row[1]), row[3] == u"=" ? row[2] : row[3]) << qPrintable(row[0]);
    }
}

TEST(DisplayWidth, InColumns)
{
    const std::pair<const char32_t*, int> rows[] = {
        {U"a設定", 5}, {U"ｱｲ", 2}, {U"e\u0301", 1}, {U"\U00020000", 2}, {U"\u115F\u1160\uFF60\uFF61", 6}};
    for (const auto& [text, columns] : rows)
        EXPECT_EQ(platform::displayWidth(QString::fromUcs4(text)), columns) << columns;
}

// Qt's warnings hold the texts that it stumbled over.
TEST(VisibleText, WarningsHoldIt)
{
    static QString printed;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) { printed = message; });
    platform::showWarningsVisibly();
    EXPECT_EQ(QString("\x1b").arg(QString()), u"\x1b");
    qInstallMessageHandler(before);
    EXPECT_TRUE(printed.contains("\\x1b")) << qPrintable(printed);
}

} // namespace
