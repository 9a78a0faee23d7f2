// Everything that goes wrong here ends in one line and a status; no value appears that the controller did not send.
#include "Table.h"
#include "VorlantCtlFixture.h"

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

constexpr auto kSettings = "config/Vorlan/Vorlant.ini";
constexpr auto kScreen = "program/ini/M.ini";
constexpr auto kComm = "program/ini/MComm.ini";

class BadInput : public VorlantCtl
{
protected:
    BadInput() { plugSound(); }

    // The tags of the parameters that have a value, after every value was compared with what was sent.
    QString valuedTags() const
    {
        QStringList tags;
        for (const QString& line : QString::fromUtf8(output).split("\r\n").mid(1)) {
            const QStringList fields = line.split(',');
            const QString value = fields.value(3);
            EXPECT_TRUE(QStringList({soundController::kModel, "25.8", "42", ""}).contains(value)) << qPrintable(line);
            if (!value.isEmpty())
                tags << fields[0];
        }
        return tags.join(' ');
    }

    // Done: message lists the tags that have a value.
    void expectRead(int expected, const QString& message)
    {
        if (expected != Done)
            return expectFails("read --as csv", expected, message);
        EXPECT_EQ(run("read --as csv"), Done);
        EXPECT_EQ(errors.toStdString(), "");
        EXPECT_EQ(valuedTags().toStdString(), message.toStdString());
    }
};

// A definition or settings file in a bad state.
TEST_F(BadInput, FilesEndInOneLine)
{
    const QByteArray binary("\x7F"
                            "ELF\x02\x00\xFF\xFE[Id]\x00=\r\r\n\x83",
                            19);
    for (const QStringList& row : tableRows("ctl/bad_files.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        ASSERT_TRUE(QDir(path("program")).removeRecursively() && QDir(path("config")).removeRecursively());
        ASSERT_TRUE(soundController::install(path("program"), path("config")));
        const QString file = path(row[1]);
        const QByteArray text = row[3] == u"<binary>" ? binary : row[3].toUtf8();
        QByteArray bytes = contentOf(row[1]);
        const auto at = bytes.indexOf(text);
        ASSERT_TRUE(at >= 0 || row[2] == u"content");
        if (row[2] == u"changed")
            bytes.replace(text, row[4].toUtf8());
        else
            bytes = row[2] == u"cut" ? bytes.left(at + text.size()) : text; // what is named is kept
        ASSERT_TRUE(QFile::remove(file));
        if (row[2] == u"folder")
            ASSERT_TRUE(QDir().mkdir(file));
        else if (row[2] == u"pipe")
            ASSERT_EQ(mkfifo(qPrintable(file), 0600), 0);
        else if (row[2] != u"missing")
            put(row[1], bytes);
        expectRead(row[5].toInt(), row[6]);
        EXPECT_EQ(QFile::exists(file), row[2] != u"missing" || row[1] == kSettings) << "a definition is never invented";
    }
}

TEST_F(BadInput, PortThatCannotBeUsed)
{
    put("plain", "text");
    const std::pair<QString, QString> rows[] = {{"nothing", "no such device"},
                                                {"plain", "not a working serial port"},
                                                {"/dev/null", "/dev/null cannot be opened"},
                                                {"COM99", "there is no such port"},
                                                {"COM100", "COM100"}};
    for (const auto& [port, message] : rows) {
        for (const char* command : {" read", " detect"})
            expectFails("--port " + port + command, NoAnswer, message);
    }
    becomePlainUser();
    ASSERT_EQ(chmod(qPrintable(controller->device()), 0), 0);
    expectRead(NoAnswer, "dialout");
    ASSERT_EQ(chmod(qPrintable(controller->device()), 0600), 0);
    const int other = open(qPrintable(controller->device()), O_RDWR | O_NOCTTY);
    ASSERT_EQ(ioctl(other, TIOCEXCL), 0);
    expectRead(NoAnswer, "in use by another program");
    close(other);
}

TEST_F(BadInput, FilesThatCannotBeWrittenAreReadAllTheSame)
{
    becomePlainUser();
    const QByteArray screen = contentOf(kScreen);
    const QByteArray settings = contentOf(kSettings);
    for (const char* name : {kScreen, kComm, kSettings})
        ASSERT_EQ(chmod(qPrintable(path(name)), 0444), 0);
    expectRead(Done, "MQCODE VQSV1 PQB1");
    EXPECT_EQ(contentOf(kScreen), screen);
    EXPECT_EQ(contentOf(kSettings), settings);
    ASSERT_TRUE(QFile::copy(path(kScreen), path("program/ini/KX410Screen.ini")));
    ASSERT_TRUE(QFile::copy(path(kComm), path("program/ini/KX410Comm.ini")));
    setVariable("XDG_CONFIG_HOME", path("program/ini/M.ini/x")); // nobody can make it
    EXPECT_EQ(run("read --as csv"), Done);
    EXPECT_EQ(valuedTags(), u"MQCODE VQSV1 PQB1");
    EXPECT_TRUE(errors.contains("Settings cannot be kept in") && errors.count('\n') == 1) << errors.toStdString();
}

TEST_F(BadInput, OutputThatCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    for (const char* target : {"folder", "no/such/out", "/dev/full", "program"}) {
        for (const char* form : {" --as csv", " --as set"})
            expectFails(QString("read -o ") + target + form, BadFile, target);
    }
    expectPrints("read -o good.txt", "");
    const QByteArray good = contentOf("good.txt");
    EXPECT_FALSE(good.isEmpty());
    const QStringList files = QDir(dir.path()).entryList(QDir::Files);
    process.setChildProcessModifier([] {
        const rlimit limit{16, 16};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    expectFails("models -o good.txt", BadFile, "good.txt: File too large");
    EXPECT_EQ(contentOf("good.txt"), good);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), files) << "no half file is left";
    process.setStandardOutputFile("/dev/full");
    expectFails("models", BadFile, "standard output");
}

TEST_F(BadInput, LineThatDoesNotAnswer)
{
    put(kSettings, contentOf(kSettings) + "[Comm1]\nRecieveTimeOut(s)=0\n"); // the shortest wait to choose
    plug([](const QByteArray&) { return QByteArray(); });
    expectRead(NoAnswer, "Id: Direct FBC0");
    plug([](const QByteArray&) { return soundController::rtu(QByteArray::fromHex("01C202")); });
    expectRead(NoAnswer, "refused the request (exception 2, illegal data address), 6 times; check model and options");
    expectFails("detect", NoAnswer, "illegal data address); check the slave address: this may be another device");
    plug(soundController::damagedReply);
    expectRead(NoAnswer, "Main: Direct 8000"); // the model was read, and is not printed
}

} // namespace
