#include "VisibleText.h"

#include "Terminal.h"

#include <gtest/gtest.h>

namespace {

TEST(VisibleText, ShowsWhatIsNotSeen)
{
    const struct
    {
        const char* name;
        QString text;
        QString line;
        QString lines;
    } rows[] = {
        {"Japanese", QStringLiteral("設定値 ｱｲ 25.8 ℃"), QStringLiteral("設定値 ｱｲ 25.8 ℃"),
         QStringLiteral("設定値 ｱｲ 25.8 ℃")},
        {"BeyondTheFirstPlane", QStringLiteral("\U00020BB7野家"), QStringLiteral("\U00020BB7野家"),
         QStringLiteral("\U00020BB7野家")},
        {"TerminalTitle", QStringLiteral("A\x1b]0;x\aB"), QStringLiteral("A\\x1b]0;x\\x07B"),
         QStringLiteral("A\\x1b]0;x\\x07B")},
        {"Nul", QString(QChar(0)) + u'1', QStringLiteral("\\x001"), QStringLiteral("\\x001")},
        {"DelAndC1",
         QStringLiteral("\x7f\u009b"
                        "2J"),
         QStringLiteral("\\x7f\\x9b2J"), QStringLiteral("\\x7f\\x9b2J")},
        {"Direction", QStringLiteral("a\u202Egpj\u2066\u200f"), QStringLiteral("a<U+202E>gpj<U+2066><U+200F>"),
         QStringLiteral("a<U+202E>gpj<U+2066><U+200F>")},
        {"Separators", QStringLiteral("a\u2028b\u2029"), QStringLiteral("a<U+2028>b<U+2029>"),
         QStringLiteral("a<U+2028>b<U+2029>")},
        {"TagBeyondTheFirstPlane", QStringLiteral("\U000E0041"), QStringLiteral("<U+E0041>"),
         QStringLiteral("<U+E0041>")},
        {"LoneSurrogates", QString(QChar(0xDC00)) + QChar(0xD800), QStringLiteral("<U+DC00><U+D800>"),
         QStringLiteral("<U+DC00><U+D800>")},
        {"LineBreaks", QStringLiteral("a\r\nb\nc\rd\te"), QStringLiteral("a\\x0d\\x0ab\\x0ac\\x0dd\\x09e"),
         QStringLiteral("a\nb\nc\\x0dd\\x09e")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(platform::visibleText(row.text).toStdString(), row.line.toStdString());
        EXPECT_EQ(platform::visibleLines(row.text).toStdString(), row.lines.toStdString());
    }
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
