#include "CommandLine.h"

#include "Table.h"

#include <gtest/gtest.h>

namespace {

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

TEST(CommandLine, TakesEveryOption)
{
    const ParsedCommandLine parsed =
        parseCommandLine(words("--port /dev/ttyUSB0 --speed 19200 --chara e,7,1 --mode ascii --slave 247 --model KX410 "
                               "--timeout 3 --quiet read -o out.json --as json"));
    ASSERT_EQ(parsed.error, QString());
    const CommandLine& line = parsed.line;
    EXPECT_EQ(line.command, Command::Read);
    EXPECT_EQ(line.port, u"/dev/ttyUSB0");
    EXPECT_EQ(line.speed, u"19200");
    EXPECT_EQ(line.chara, u"E,7,1");
    EXPECT_EQ(line.transmissionMode, 1);
    EXPECT_EQ(line.slave, 247);
    EXPECT_EQ(line.model, u"KX410");
    EXPECT_EQ(line.timeoutSeconds, 3);
    EXPECT_TRUE(line.quiet);
    EXPECT_EQ(line.outputFile, u"out.json");
    EXPECT_EQ(line.format, OutputFormat::Json);
}

TEST(CommandLine, SaysInOneLineWhatIsWrong)
{
    for (const QStringList& row : tableRows("ctl/refused_command_lines.tsv")) {
        const QString error = parseCommandLine(row[1].split(u' ')).error;
        EXPECT_TRUE(error.contains(row[2])) << qPrintable(row[0] + u' ' + error);
        EXPECT_FALSE(error.contains(u'\n'));
    }
}

} // namespace
