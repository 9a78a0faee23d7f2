#include "CommandLine.h"

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

TEST(CommandLine, LeavesTheRestToTheSettings)
{
    const ParsedCommandLine parsed = parseCommandLine(words("read"));
    ASSERT_EQ(parsed.error, QString());
    EXPECT_TRUE(parsed.line.port.isEmpty() && parsed.line.speed.isEmpty() && parsed.line.chara.isEmpty());
    EXPECT_FALSE(parsed.line.transmissionMode || parsed.line.slave || parsed.line.timeoutSeconds);
    EXPECT_FALSE(parsed.line.quiet);
    EXPECT_EQ(parsed.line.format, OutputFormat::Table);
}

TEST(CommandLine, KeepsTheWordsAsTheyAre)
{
    const CommandLine line = parseCommandLine({QStringLiteral("set"), QStringLiteral("A=x=y z"), QStringLiteral("B="),
                                               QStringLiteral("--as"), QStringLiteral("csv")})
                                 .line;
    EXPECT_EQ(line.command, Command::Set);
    EXPECT_EQ(line.words, (QStringList{QStringLiteral("A=x=y z"), QStringLiteral("B=")}));
    EXPECT_EQ(line.format, OutputFormat::Csv);
}

TEST(CommandLine, HelpListsEveryOptionAndCommand)
{
    EXPECT_EQ(parseCommandLine(words("--help")).line.command, Command::Help);
    EXPECT_EQ(parseCommandLine(words("--version read")).line.command, Command::Version);
    for (const char* word :
         {"models", "ports", "detect", "read", "show FILE", "get TAG", "set TAG=VALUE", "write FILE", "compare FILE",
          "--port", "--speed", "--chara", "--mode", "--slave", "--model", "--timeout", "--quiet", "-o FILE", "--as"})
        EXPECT_TRUE(helpText().contains(QString::fromLatin1(word))) << word;
}

struct Refused
{
    const char* name;
    const char* line;
    const char* mentions;
};

class RefusedCommandLine : public ::testing::TestWithParam<Refused>
{};

TEST_P(RefusedCommandLine, SaysWhyInOneLine)
{
    const QString error = parseCommandLine(words(GetParam().line)).error;
    EXPECT_TRUE(error.contains(QString::fromUtf8(GetParam().mentions))) << qPrintable(error);
    EXPECT_FALSE(error.contains(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RefusedCommandLine,
    ::testing::Values(
        Refused{"NoCommand", "--quiet", "no command"}, Refused{"UnknownCommand", "explode", "\"explode\""},
        Refused{"TooManyWords", "read VQSV1", "\"VQSV1\""}, Refused{"ShowNothing", "show", "one parameter file"},
        Refused{"ShowTwo", "show a.kx b.kx", "\"b.kx\""}, Refused{"GetNothing", "get --quiet", "one TAG"},
        Refused{"SetNothing", "set", "TAG=VALUE"}, Refused{"SetWithoutValue", "set A=1 B", "\"B\""},
        Refused{"SetWithoutTag", "set =1", "\"=1\""}, Refused{"SetTwice", "set A=1 A=2", "A is there twice"},
        Refused{"WriteTwo", "write a.kx b.kx", "\"b.kx\""}, Refused{"CompareThree", "compare a b c", "\"c\""},
        Refused{"SetFormElsewhere", "show a.kx --as set -o b.kx", "read with -o"},
        Refused{"SetFormPrinted", "read --as set", "read with -o"}, Refused{"UnknownOption", "--prot x read", "prot"},
        Refused{"OptionWithoutValue", "read --port", "port"}, Refused{"SlaveZero", "--slave 0 read", "--slave"},
        Refused{"SlaveAbove", "--slave 248 read", "247"}, Refused{"SlaveText", "--slave one read", "\"one\""},
        Refused{"Mode", "--mode tcp read", "rtu or ascii"}, Refused{"Speed", "--speed -9600 read", "--speed"},
        Refused{"Chara", "--chara N,9,1 read", "N,8,1"}, Refused{"Timeout", "--timeout 0 read", "3600"},
        Refused{"Format", "read --as xml", "json"}, Refused{"EmptyFile", "read -o=", "-o"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
