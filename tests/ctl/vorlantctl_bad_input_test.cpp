#include "Table.h"
#include "VorlantCtlFixture.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using soundController::writeFile;

enum Status { Done = 0, Usage = 2, NoAnswer = 3, WrongModel = 4, BadFile = 5 };

constexpr auto kSettings = "config/Vorlan/Vorlant.ini";
constexpr auto kScreen = "program/ini/M.ini";
constexpr auto kComm = "program/ini/MComm.ini";

// Everything that goes wrong here ends in one line and a status; no value appears that the controller did not send.
class BadInput : public VorlantCtl
{
protected:
    void SetUp() override
    {
        plug([](const QByteArray& request) { return soundController::reply(request); });
    }

    void put(const char* name, const QByteArray& bytes) { ASSERT_TRUE(writeFile(path(name), bytes)); }
    void addSetting(const char* section, const char* line)
    {
        put(kSettings, contentOf(kSettings) + '[' + section + "]\n" + line + '\n');
    }

    int readJson() { return readWith(words("--as json")); }

    // The tags of the parameters that have a value, after every value was compared with what was sent.
    QStringList valuedTags() const
    {
        const QStringList sent{QString::fromLatin1(soundController::kModel), QStringLiteral("25.8"),
                               QStringLiteral("42"), QString()};
        QStringList tags;
        const QJsonDocument document = QJsonDocument::fromJson(output);
        EXPECT_TRUE(document.isArray()) << output.toStdString();
        for (const QJsonValue& row : document.array()) {
            const QString value = row[u"value"].toString();
            EXPECT_TRUE(sent.contains(value)) << output.toStdString();
            if (!value.isEmpty())
                tags << row[u"tag"].toString();
        }
        return tags;
    }

    void expectEnd(int status, int expected, const char* message)
    {
        EXPECT_EQ(status, expected) << errors.toStdString() << output.toStdString();
        if (expected == Done) {
            EXPECT_TRUE(errors.isEmpty()) << errors.toStdString();
            EXPECT_EQ(valuedTags().join(u' ').toStdString(), message);
        } else {
            expectOneLineAbout(message);
        }
    }
};

// FILES: a definition or settings file in a bad state.

constexpr auto kAllTags = "MQCODE VQSV1 PQB1";

TEST_F(BadInput, FilesEndInOneLine)
{
    QHash<QString, QByteArray> sound;
    for (const char* file : {kSettings, kScreen, kComm})
        sound.insert(QLatin1String(file), contentOf(file));
    const QByteArray binary("\x7F"
                            "ELF\x02\x00\xFF\xFE[Id]\x00=\r\r\n\x83",
                            19);
    for (const QStringList& row : tableRows("ctl/bad_files.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        for (auto file = sound.cbegin(); file != sound.cend(); ++file) {
            QFile::remove(dir.filePath(file.key()));
            QDir().rmdir(dir.filePath(file.key()));
            ASSERT_TRUE(writeFile(dir.filePath(file.key()), file.value()));
        }
        const QString file = dir.filePath(row[1]);
        const QByteArray text = row[3] == u"<binary>" ? binary : row[3].toUtf8();
        QByteArray bytes = sound[row[1]];
        ASSERT_TRUE(row[2] == u"content" || bytes.contains(text));
        if (row[2] == u"changed")
            bytes.replace(text, row[4].toUtf8());
        else if (row[2] == u"cut")
            bytes.truncate(bytes.indexOf(text) + text.size()); // what is named is kept
        else
            bytes = text;
        ASSERT_TRUE(QFile::remove(file));
        const bool made = row[2] == u"missing"  ? true
                          : row[2] == u"folder" ? QDir().mkdir(file)
                          : row[2] == u"pipe"   ? mkfifo(qPrintable(file), 0600) == 0
                                                : writeFile(file, bytes);
        ASSERT_TRUE(made);
        expectEnd(readJson(), row[5].toInt(), qPrintable(row[6]));
        EXPECT_EQ(QFile::exists(file), row[2] != u"missing" || row[1] == QLatin1String(kSettings))
            << "a definition is never invented";
    }
}

// SETTINGS that a person may have typed wrongly: the read works with what makes sense.

struct SettingRow
{
    const char* name;
    const char* section;
    const char* line;
};

class OddSetting : public BadInput, public ::testing::WithParamInterface<SettingRow>
{};

TEST_P(OddSetting, DoesNotStopARead)
{
    addSetting(GetParam().section, GetParam().line);
    expectEnd(readJson(), Done, kAllTags);
}

INSTANTIATE_TEST_SUITE_P(Lines, OddSetting,
                         ::testing::Values(SettingRow{"SlaveNegative", "Setting", "LastSlaveAdr=-1"},
                                           SettingRow{"SlaveHuge", "Setting", "LastSlaveAdr=2147483648"},
                                           SettingRow{"ModeUnknown", "Setting", "LastModebusMode=7"},
                                           SettingRow{"PortNegative", "Comm1", "CommPortNo=-1"},
                                           SettingRow{"PortHuge", "Comm1", "CommPortNo=2147483648"},
                                           SettingRow{"BufferNegative", "Comm1", "InBufferSize=-1"},
                                           SettingRow{"ThresholdHuge", "Comm1", "RecvThreshold=2147483647"},
                                           SettingRow{"HandshakingUnknown", "Comm1", "Handshaking=99"}),
                         [](const auto& row) { return std::string(row.param.name); });

// FILES that speak to the terminal: the error line shows what they hold.
TEST_F(BadInput, TextsOfFilesAreShownInTheErrorLine)
{
    put("set.k41", "[Info]\nMODEL=KX\x1b]0;owned\x07\xE2\x80\xAE\x7f\n[Data]\nVQSV1=1\n");
    expectEnd(run({QStringLiteral("show"), path("set.k41")}), WrongModel, "KX\\x1b]0;owned\\x07<U+202E>\\x7f\"");
}

// PORTS

TEST_F(BadInput, PortThatIsNone)
{
    put("plain", "text");
    struct
    {
        QString port;
        const char* message;
    } const rows[] = {{path("nothing"), "no such device"},
                      {path("plain"), "not a working serial port"},
                      {dir.path(), "not a working serial port"},
                      {QStringLiteral("/dev/null"), "not a working serial port"},
                      {QStringLiteral("COM99"), "there is no such port"},
                      {QStringLiteral("COM100"), "COM100"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.port));
        const int status = run({QStringLiteral("--port"), row.port, QStringLiteral("--model"), QStringLiteral("KX410"),
                                QStringLiteral("read")});
        expectEnd(status, NoAnswer, row.message);
    }
}

TEST_F(BadInput, PortWithoutPermission)
{
    ASSERT_TRUE(becomePlainUser());
    ASSERT_EQ(chmod(qPrintable(controller->device()), 0), 0);
    expectEnd(readJson(), NoAnswer, "dialout");
}

TEST_F(BadInput, PortInUse)
{
    ASSERT_TRUE(becomePlainUser());
    const int other = open(qPrintable(controller->device()), O_RDWR | O_NOCTTY);
    ASSERT_EQ(ioctl(other, TIOCEXCL), 0);
    expectEnd(readJson(), NoAnswer, "in use by another program");
    close(other);
}

// FOLDERS AND OUTPUT

TEST_F(BadInput, ReadOnlyFilesStayAsTheyAre)
{
    ASSERT_TRUE(becomePlainUser());
    const QByteArray screen = contentOf(kScreen);
    const QByteArray settings = contentOf(kSettings);
    for (const char* name : {kScreen, kComm, kSettings})
        ASSERT_EQ(chmod(qPrintable(path(name)), 0444), 0);
    expectEnd(readJson(), Done, kAllTags);
    EXPECT_EQ(contentOf(kScreen), screen);
    EXPECT_EQ(contentOf(kSettings), settings);
}

TEST_F(BadInput, HomeThatCannotBeWrittenToIsOneLine)
{
    ASSERT_TRUE(QFile::copy(path(kScreen), path("program/ini/KX410Screen.ini")));
    ASSERT_TRUE(QFile::copy(path(kComm), path("program/ini/KX410Comm.ini")));
    put("file", "");
    QProcessEnvironment environment = process.processEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path("file/x")); // not even root makes it
    process.setProcessEnvironment(environment);
    EXPECT_EQ(readJson(), Done);
    EXPECT_EQ(valuedTags().join(u' '), QLatin1String(kAllTags));
    EXPECT_TRUE(errors.contains("Settings cannot be kept in")) << errors.toStdString();
    EXPECT_EQ(errors.count('\n'), 1) << errors.toStdString();
}

TEST_F(BadInput, OutputThatCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    for (const QString& target : {path("folder"), path("no/such/out.json"), QStringLiteral("/dev/full")}) {
        SCOPED_TRACE(qPrintable(target));
        expectEnd(readWith({QStringLiteral("-o"), target}), BadFile, qPrintable(target));
    }
    EXPECT_EQ(QDir(dir.path()).entryList(words("out* folder?*")), QStringList());
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    expectEnd(readWith(), BadFile, "standard output");
}

TEST_F(BadInput, OutputOnAFullDiskLeavesTheGoodFile)
{
    ASSERT_EQ(run({QStringLiteral("models"), QStringLiteral("-o"), path("good.txt")}), Done);
    const QByteArray good = contentOf("good.txt");
    process.setChildProcessModifier([] {
        const rlimit limit{16, 16};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    expectEnd(run({QStringLiteral("models"), QStringLiteral("-o"), path("good.txt")}), BadFile,
              "good.txt: File too large");
    EXPECT_EQ(contentOf("good.txt"), good);
    EXPECT_FALSE(good.isEmpty());
}

// THE LINE

struct LineRow
{
    const char* name;
    ScriptedController::Answer answer;
    int expected;
    const char* message;
};

class BadLine : public BadInput, public ::testing::WithParamInterface<LineRow>
{};

TEST_P(BadLine, EndsInOneLine)
{
    addSetting("Comm1", "RecieveTimeOut(s)=0"); // the shortest wait that a person can choose
    plug(GetParam().answer);
    expectEnd(readJson(), GetParam().expected, GetParam().message);
}

QByteArray noise(const QByteArray& request)
{
    QByteArray bytes = request + request + request + request;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(bytes[i] * 31 + i * 17 + 0x5A);
    return bytes;
}

QByteArray fromSlave(char slave, QByteArray reply)
{
    reply.chop(2);
    reply[0] = slave;
    return soundController::rtu(reply);
}

// Only the first request, the model string, is answered in full.
ScriptedController::Answer afterTheModel(ScriptedController::Answer answer)
{
    return [answer](const QByteArray& request) {
        return soundController::asksFor(request, "0000FBC0") ? soundController::reply(request) : answer(request);
    };
}

INSTANTIATE_TEST_SUITE_P(
    Replies, BadLine,
    ::testing::Values(LineRow{"Silence", [](const QByteArray&) { return QByteArray(); }, NoAnswer, "Id: Direct FBC0"},
                      LineRow{"HalfAReply",
                              [](const QByteArray& request) {
                                  const QByteArray whole = soundController::reply(request);
                                  return whole.left(whole.size() / 2);
                              },
                              NoAnswer, "Id: Direct FBC0"},
                      LineRow{"NoiseAfterTheModel", afterTheModel(noise), NoAnswer, "Main: Direct 8000"},
                      LineRow{"WrongSlave",
                              [](const QByteArray& request) { return fromSlave(2, soundController::reply(request)); },
                              NoAnswer, "Id: Direct FBC0"},
                      LineRow{"Echo", [](const QByteArray& request) { return request; }, NoAnswer, "Id: Direct FBC0"},
                      LineRow{"Exception",
                              [](const QByteArray&) { return soundController::rtu(QByteArray::fromHex("01C202")); },
                              NoAnswer, "exception 2"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
