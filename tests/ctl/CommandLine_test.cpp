#include "CommandLine.h"

#include "Table.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandLine, ReadsEveryOption)
{
    const auto [line, error] = parseCommandLine(
        QString("--port /dev/ttyUSB0 --speed 19200 --chara e,7,1 --mode ascii --slave 247 --model KX410 --timeout 0.05 "
                "--quiet --read-only --no-backup read -o out.json --as json")
            .split(' '));
    ASSERT_EQ(error, QString());
    EXPECT_EQ(line.command, Command::Read);
    EXPECT_EQ(QStringList({line.port, line.speed, line.chara, line.model, line.outputFile}).join(' '),
              u"/dev/ttyUSB0 19200 E,7,1 KX410 out.json");
    EXPECT_TRUE(line.transmissionMode == 1 && line.slave == 247 && line.timeoutMs == 50);
    EXPECT_TRUE(line.quiet && line.readOnly && line.withoutBackup);
    EXPECT_EQ(line.format, OutputFormat::Json);
    const CommandLine scan = parseCommandLine({"scan", "--slaves", "5-247", "--speeds", "300,9600", "--formats",
                                               "n81,E71", "--modes", "ascii", "--first"})
                                 .line;
    EXPECT_EQ(scan.scanChoice.speeds.join(' ') + ' ' + scan.scanChoice.charas.join(' '), u"300 9600 N,8,1 E,7,1");
    EXPECT_TRUE(scan.firstSlave == 5 && scan.lastSlave == 247 && scan.scanChoice.modes == QList{1} && scan.onlyFirst);
    EXPECT_EQ(parseCommandLine({"--mode", "rtu", "ports"}).line.transmissionMode, 0);
}

TEST(CommandLine, SaysInOneLineWhatIsWrong)
{
    for (const QStringList& row : tableRows("ctl/refused_command_lines.tsv")) {
        const QString error = parseCommandLine(row[1].split(' ')).error;
        EXPECT_TRUE(error.contains(row[2]) && !error.contains('\n')) << qPrintable(row[0] + ' ' + error);
    }
}

} // namespace
