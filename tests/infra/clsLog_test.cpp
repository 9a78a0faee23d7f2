#include "clsLog.h"

#include "TestMachine.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class LogFile : public ::testing::Test
{
protected:
    LogFile()
    {
        log.setLogPath("C:\\Vorlant\\Log\\\\");
        log.setLogFileName("L.log");
    }
    QByteArray content() { return box.content("C:\\Vorlant\\Log\\L.log"); }
    int last() { return static_cast<quint8>(content().at(8)); }
    QByteArray body(int n, int size) { return content().mid(16 + (n - 1) * size + 25, size - 27); }

    TestMachine box;
    clsLog log{box.machine};
};

TEST_F(LogFile, FirstRecordByteByByte)
{
    log.LogWrite("Hello");
    EXPECT_EQ(content(), QByteArray::fromHex("FF0F0000 00010000 01000000 0000 0D0A") +
                             QByteArray("[2007/03/05 14:07:09:042]Hello").leftJustified(254, ' ') + "\r\n");
}

TEST_F(LogFile, LongMessagesAreSpread)
{
    log.LogWrite(QString(229, 'a'));
    EXPECT_EQ(last(), 1);
    log.LogWrite(QString(230, 'b'));
    EXPECT_EQ(last(), 3);
    EXPECT_EQ(body(3, 256), QByteArray("b").leftJustified(229, ' '));
    log.LogWrite(QString(228, 'c') + "ソ");
    EXPECT_EQ(body(4, 256), QByteArray(228, 'c') + ' ') << "a double-byte character is not cut";
    EXPECT_EQ(body(5, 256), QByteArray("\x83\x5c").leftJustified(229, ' '));
    log.setLogRecSize(28);
    log.LogWrite("aソb");
    EXPECT_EQ(body(1, 28) + body(2, 28) + body(3, 28), "a?b") << "no room for the character in any record";
    box.machine.codePage = platform::CodePage("GB18030");
    log.setLogRecSize(32);
    log.LogWrite("abñ"); // four bytes
    EXPECT_EQ(body(1, 32) + '|' + body(2, 32), "ab   |" + box.machine.codePage.fromText("ñ "));
}

TEST_F(LogFile, OtherOrDamagedFileIsRestarted)
{
    log.LogWrite("old");
    log.setLogRecSize(64);
    log.LogWrite("new");
    log.LogWrite("second");
    EXPECT_EQ(content().size(), 16 + 2 * 64);
    for (const char* position : {"\xFF\xFF\xFF\x7F", "\xFE\xFF\xFF\xFF"}) { // the ring goes on at its start
        box.put("C:\\Vorlant\\Log\\L.log", content().replace(8, 4, position));
        log.LogWrite("again");
        EXPECT_EQ(last(), 1);
        EXPECT_EQ(content().size(), 16 + 2 * 64) << "what was logged stays";
    }
}

// A pipe would make the program wait, and a link into a shared folder may be another user's.
TEST_F(LogFile, OnlyARegularFileIsWritten)
{
    const QByteArray folder = QFile::encodeName(box.path("C:\\Vorlant\\Log"));
    log.setLogFileName("pipe.log");
    ASSERT_EQ(mkfifo((folder + "/pipe.log").constData(), 0600), 0);
    log.LogWrite("x");
    ASSERT_TRUE(box.put("C:\\Vorlant\\kept.txt", "good"));
    log.setLogFileName("link.log");
    ASSERT_EQ(symlink("../kept.txt", (folder + "/link.log").constData()), 0);
    if (geteuid() != 0 || lchown((folder + "/link.log").constData(), 65534, 65534) != 0)
        return;
    ASSERT_EQ(chmod(folder.constData(), 01777), 0);
    log.LogWrite("x");
    EXPECT_EQ(box.content("C:\\Vorlant\\kept.txt"), "good");
}

TEST_F(LogFile, RefusedSettingsAndFailuresAreSilent)
{
    log.setLogRecSize(27);
    log.setMaxLogCnt(0);
    log.setLogFileName("a?b.log");
    log.LogWrite(QString());
    EXPECT_EQ(content().size(), 16 + 256);
    EXPECT_EQ(content().left(8), QByteArray::fromHex("FF0F000000010000"));
    log.setLogSwitch(false);
    log.LogWrite("x");
    EXPECT_EQ(last(), 1);
    log.setLogSwitch(true);
    log.setLogPath("C:\\Vorlant\\Missing");
    log.LogWrite("x");
    EXPECT_FALSE(box.machine.paths.dirExists("C:\\Vorlant\\Missing"));
}

} // namespace
