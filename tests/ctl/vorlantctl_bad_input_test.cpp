#include "VorlantCtlFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <functional>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace {

using soundController::writeFile;

enum Status { Done = 0, Usage = 2, NoAnswer = 3, WrongModel = 4, BadFile = 5 };

constexpr auto kSettings = "config/Vorlan/Vorlant.ini";
constexpr auto kScreen = "program/ini/M.ini";
constexpr auto kComm = "program/ini/MComm.ini";
const QByteArray kBinary("\x7F"
                         "ELF\x02\x00\xFF\xFE[Id]\x00=\r\r\n\x83",
                         19);

// Everything that goes wrong here ends in one line and a status; no value appears that the controller did not send.
class BadInput : public VorlantCtl
{
protected:
    void SetUp() override
    {
        plug([](const QByteArray& request) { return soundController::reply(request); });
    }

    QByteArray contentOf(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void put(const char* name, const QByteArray& bytes) { ASSERT_TRUE(writeFile(path(name), bytes)); }
    void remove(const char* name) { ASSERT_TRUE(QFile::remove(path(name))); }
    void makeFolder(const char* name)
    {
        remove(name);
        ASSERT_TRUE(QDir().mkdir(path(name)));
    }
    void addSetting(const char* section, const char* line)
    {
        put(kSettings, contentOf(kSettings) + '[' + section + "]\n" + line + '\n');
    }

    int readJson() { return readWith({QStringLiteral("--as"), QStringLiteral("json")}); }

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

struct FileRow
{
    const char* name;
    const char* file;
    std::function<void(QByteArray& content)> damage; // empty: what state says
    enum State { Changed, Missing, Folder, Pipe } state;
    int expected;
    const char* message; // a piece of the line; for Done the tags that have a value
};

void PrintTo(const FileRow& row, std::ostream* out)
{
    *out << row.name;
}

constexpr auto kAllTags = "MQCODE VQSV1 PQB1";

class BadFileRow : public BadInput, public ::testing::WithParamInterface<FileRow>
{};

TEST_P(BadFileRow, EndsInOneLine)
{
    const FileRow& row = GetParam();
    switch (row.state) {
    case FileRow::Changed: {
        QByteArray bytes = contentOf(row.file);
        row.damage(bytes);
        put(row.file, bytes);
        break;
    }
    case FileRow::Missing:
        remove(row.file);
        break;
    case FileRow::Folder:
        makeFolder(row.file);
        break;
    case FileRow::Pipe:
        remove(row.file);
        ASSERT_EQ(mkfifo(qPrintable(path(row.file)), 0600), 0);
        break;
    }
    expectEnd(readJson(), row.expected, row.message);
    if (row.state == FileRow::Missing && row.file != kSettings) {
        EXPECT_FALSE(QFile::exists(path(row.file))) << "a definition is never invented";
    }
}

FileRow missing(const char* name, const char* file, const char* message)
{
    return {name, file, {}, FileRow::Missing, BadFile, message};
}

FileRow folder(const char* name, const char* file, const char* message)
{
    return {name, file, {}, FileRow::Folder, BadFile, message};
}

FileRow pipe(const char* name, const char* file, const char* message)
{
    return {name, file, {}, FileRow::Pipe, BadFile, message};
}

FileRow content(const char* name, const char* file, const QByteArray& bytes, int expected, const char* message)
{
    return {name, file, [bytes](QByteArray& all) { all = bytes; }, FileRow::Changed, expected, message};
}

// Everything up to and including the text is kept.
FileRow cut(const char* name, const char* file, const char* lastKept, int expected, const char* message)
{
    const auto damage = [lastKept](QByteArray& all) {
        ASSERT_TRUE(all.contains(lastKept));
        all.truncate(all.indexOf(lastKept) + static_cast<qsizetype>(qstrlen(lastKept)));
    };
    return {name, file, damage, FileRow::Changed, expected, message};
}

FileRow changed(const char* name, const char* file, const char* before, const char* after, int expected,
                const char* message)
{
    const auto damage = [before, after](QByteArray& all) {
        ASSERT_TRUE(all.contains(before)) << before;
        all.replace(before, after);
    };
    return {name, file, damage, FileRow::Changed, expected, message};
}

std::string rowName(const ::testing::TestParamInfo<FileRow>& row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Settings, BadFileRow,
    ::testing::Values(missing("Missing", kSettings, "KX410Screen.ini"),
                      folder("Folder", kSettings, "Vorlant.ini cannot be read"),
                      pipe("Pipe", kSettings, "Vorlant.ini cannot be read"),
                      content("Empty", kSettings, "", BadFile, "KX410Screen.ini"),
                      content("Binary", kSettings, kBinary, BadFile, "KX410Screen.ini"),
                      cut("CutInTheModel", kSettings, "KXModel1=KX4", Usage, "\"KX410\" is not in the model catalogue"),
                      cut("CutBeforeTheFiles", kSettings, "KXName1=KX410\n", BadFile, "definition file \"\""),
                      changed("CountNegative", kSettings, "KXMaxCount=1", "KXMaxCount=-1", BadFile, "KXMaxCount"),
                      changed("CountTooLarge", kSettings, "KXMaxCount=1", "KXMaxCount=2147483648", BadFile,
                              "KXMaxCount"),
                      changed("CountHuge", kSettings, "KXMaxCount=1", "KXMaxCount=2147483647", Done, kAllTags),
                      changed("CountText", kSettings, "KXMaxCount=1", "KXMaxCount=one", BadFile, "KXMaxCount"),
                      changed("CountZero", kSettings, "KXMaxCount=1", "KXMaxCount=0", BadFile, "KX410Screen.ini"),
                      changed("FileNameWithFolder", kSettings, "=M.ini", "=..\\ini\\M.ini", BadFile, "M.ini")),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Screen, BadFileRow,
    ::testing::Values(
        missing("Missing", kScreen, "M.ini\" is missing"), folder("Folder", kScreen, "M.ini\" cannot be read"),
        pipe("Pipe", kScreen, "M.ini\" cannot be read"), content("Empty", kScreen, "", BadFile, "M.ini"),
        content("Binary", kScreen, kBinary, BadFile, "M.ini"),
        cut("CutBeforeTheParameters", kScreen, "[Da", BadFile, "M.ini names nothing to read"),
        cut("CutInTheSecondParameter", kScreen, "KXAddress=80", Done, "MQCODE"),
        changed("CountNegative", kScreen, "DataMaxCount=3", "DataMaxCount=-1", BadFile, "no parameters"),
        changed("CountZero", kScreen, "DataMaxCount=3", "DataMaxCount=0", BadFile, "no parameters"),
        changed("CountTooLarge", kScreen, "DataMaxCount=3", "DataMaxCount=2147483648", BadFile, "no parameters"),
        changed("CountHuge", kScreen, "DataMaxCount=3", "DataMaxCount=2147483647", Done, kAllTags),
        changed("CountText", kScreen, "DataMaxCount=3", "DataMaxCount=three", BadFile, "no parameters"),
        changed("BlockCountHuge", kScreen, "BlockMaxCount=1", "BlockMaxCount=2147483647", Done, kAllTags),
        changed("RowsNegative", kScreen, "MaxRow=5", "MaxRow=-1", Done, kAllTags),
        changed("RowsHuge", kScreen, "MaxRow=5", "MaxRow=2147483647", Done, kAllTags),
        changed("RowsText", kScreen, "MaxRow=5", "MaxRow=five\nMaxCol=-2147483648", Done, kAllTags),
        changed("CellFarOutside", kScreen, "CellData=2,1,", "CellData=-2147483648,2147483647,", Done, kAllTags),
        changed("LengthNegative", kScreen, "DataLen=14", "DataLen=-1", Done, "VQSV1 PQB1"),
        changed("LengthHuge", kScreen, "DataLen=14", "DataLen=2147483647", Done, kAllTags),
        changed("LengthText", kScreen, "Name=設定値\nDataLen=2", "DataLen=two", Done, "MQCODE PQB1"),
        changed("AddressText", kScreen, "KXAddress=8000", "KXAddress=here", Done, "MQCODE PQB1"),
        changed("AddressOutside", kScreen, "KXAddress=8000", "KXAddress=FFFFFFFF", Done, "MQCODE PQB1")),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Comm, BadFileRow,
    ::testing::Values(missing("Missing", kComm, "MComm.ini\" is missing"),
                      folder("Folder", kComm, "MComm.ini\" cannot be read"),
                      pipe("Pipe", kComm, "MComm.ini\" cannot be read"),
                      content("Empty", kComm, "", BadFile, "MComm.ini"),
                      content("Binary", kComm, kBinary, BadFile, "MComm.ini"),
                      content("NoReadCommands", kComm, "[Id]\n", BadFile, "MComm.ini"),
                      cut("CutBeforeASection", kComm, "FBC0,14\n[Ma", BadFile, "[Main], [Reg]"),
                      cut("CutInAnAddress", kComm, "ReadCmd1=Direct,80", BadFile, "[Main], [Reg]"),
                      changed("CountNegative", kComm, "[Main]\n", "[Main]\nReadCmdMax=-1\n", BadFile, "[Main]"),
                      changed("CountZero", kComm, "[Main]\n", "[Main]\nReadCmdMax=0\n", BadFile, "[Main]"),
                      changed("CountTooLarge", kComm, "[Main]\n", "[Main]\nReadCmdMax=2147483648\n", BadFile, "[Main]"),
                      changed("CountHuge", kComm, "[Main]\n", "[Main]\nReadCmdMax=2147483647\n", BadFile, "[Main]"),
                      changed("CountText", kComm, "[Main]\n", "[Main]\nReadCmdMax=all\n", BadFile, "[Main]"),
                      changed("LengthNegative", kComm, "8000,4", "8000,-4", BadFile, "Main: Direct 8000"),
                      changed("LengthZero", kComm, "8000,4", "8000,0", BadFile, "[Main]"),
                      changed("LengthHuge", kComm, "8000,4", "8000,2147483647", BadFile, "Main: Direct 8000"),
                      changed("LengthText", kComm, "8000,4", "8000,four", BadFile, "[Main]"),
                      changed("UnknownCommand", kComm, "GetAnalogInput", "GetEverything", BadFile, "[Reg]"),
                      changed("RegisterOutside", kComm, "30001,1", "2147483647,1", BadFile, "Reg: GetAnalogInput"),
                      changed("RegisterText", kComm, "30001,1", "first,1", Done, kAllTags)), // counts as register 0
    rowName);

// SETTINGS that a person may have typed wrongly: the read works with what makes sense.

struct SettingRow
{
    const char* name;
    const char* section;
    const char* line;
};

void PrintTo(const SettingRow& row, std::ostream* out)
{
    *out << row.line;
}

class OddSetting : public BadInput, public ::testing::WithParamInterface<SettingRow>
{};

TEST_P(OddSetting, DoesNotStopARead)
{
    addSetting(GetParam().section, GetParam().line);
    expectEnd(readJson(), Done, kAllTags);
}

INSTANTIATE_TEST_SUITE_P(Lines, OddSetting,
                         ::testing::Values(SettingRow{"SlaveNegative", "Setting", "LastSlaveAdr=-1"},
                                           SettingRow{"SlaveZero", "Setting", "LastSlaveAdr=0"},
                                           SettingRow{"SlaveTooLarge", "Setting", "LastSlaveAdr=248"},
                                           SettingRow{"SlaveHuge", "Setting", "LastSlaveAdr=2147483648"},
                                           SettingRow{"ModeUnknown", "Setting", "LastModebusMode=7"},
                                           SettingRow{"PortNegative", "Comm1", "CommPortNo=-1"},
                                           SettingRow{"PortZero", "Comm1", "CommPortNo=0"},
                                           SettingRow{"PortTooLarge", "Comm1", "CommPortNo=100"},
                                           SettingRow{"PortHuge", "Comm1", "CommPortNo=2147483648"},
                                           SettingRow{"PortText", "Comm1", "CommPortNo=COM1"},
                                           SettingRow{"BufferNegative", "Comm1", "InBufferSize=-1"},
                                           SettingRow{"BufferOfOneByte", "Comm1", "InBufferSize=1"},
                                           SettingRow{"BufferHuge", "Comm1", "InBufferSize=2147483647"},
                                           SettingRow{"ThresholdHuge", "Comm1", "RecvThreshold=2147483647"},
                                           SettingRow{"HandshakingUnknown", "Comm1", "Handshaking=99"},
                                           SettingRow{"TimeOutText", "Comm1", "RecieveTimeOut(s)=soon"}),
                         [](const auto& row) { return std::string(row.param.name); });

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
    if (!becomePlainUser())
        GTEST_SKIP() << "a user without rights cannot reach the program";
    ASSERT_EQ(chmod(qPrintable(controller->device()), 0), 0);
    expectEnd(readJson(), NoAnswer, "dialout");
}

TEST_F(BadInput, PortInUse)
{
    if (!becomePlainUser())
        GTEST_SKIP() << "a user without rights cannot reach the program";
    const int other = open(qPrintable(controller->device()), O_RDWR | O_NOCTTY);
    ASSERT_EQ(ioctl(other, TIOCEXCL), 0);
    expectEnd(readJson(), NoAnswer, "in use by another program");
    close(other);
}

// FOLDERS AND OUTPUT

TEST_F(BadInput, SettingsFolderThatIsAFile)
{
    remove(kSettings);
    ASSERT_TRUE(QDir().rmdir(path("config/Vorlan")));
    put("config/Vorlan", "a file");
    expectEnd(readJson(), BadFile, "Vorlant.ini cannot be written");
    expectEnd(run({QStringLiteral("models")}), BadFile, "Vorlant.ini cannot be written");
}

TEST_F(BadInput, ReadOnlyFilesStayAsTheyAre)
{
    const QByteArray screen = contentOf(kScreen);
    const QByteArray settings = contentOf(kSettings);
    for (const char* name : {kScreen, kComm, kSettings})
        ASSERT_EQ(chmod(qPrintable(path(name)), 0444), 0);
    expectEnd(readJson(), Done, kAllTags);
    EXPECT_EQ(contentOf(kScreen), screen);
    EXPECT_EQ(contentOf(kSettings), settings);
}

TEST_F(BadInput, ReadOnlyFolders)
{
    if (!becomePlainUser())
        GTEST_SKIP() << "a user without rights cannot reach the program";
    for (const char* name : {"program/ini", "program", "config/Vorlan"})
        ASSERT_EQ(chmod(qPrintable(path(name)), 0555), 0);
    expectEnd(readJson(), Done, kAllTags);
    for (const char* name : {"program", "program/ini", "config/Vorlan"})
        chmod(qPrintable(path(name)), 0755);
}

TEST_F(BadInput, UnreadableDefinition)
{
    if (!becomePlainUser())
        GTEST_SKIP() << "a user without rights cannot reach the program";
    ASSERT_EQ(chmod(qPrintable(path(kScreen)), 0), 0);
    expectEnd(readJson(), BadFile, "M.ini\" cannot be read");
}

TEST_F(BadInput, OutputThatCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    for (const QString& target : {path("folder"), path("no/such/out.json"), QStringLiteral("/dev/full")}) {
        SCOPED_TRACE(qPrintable(target));
        expectEnd(readWith({QStringLiteral("-o"), target}), BadFile, qPrintable(target));
    }
    EXPECT_EQ(QDir(dir.path()).entryList({QStringLiteral("out*"), QStringLiteral("folder?*")}), QStringList());
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    expectEnd(readWith(), BadFile, "standard output");
}

// THE LINE

struct LineRow
{
    const char* name;
    ScriptedController::Answer answer;
    int expected;
    const char* message;
};

void PrintTo(const LineRow& row, std::ostream* out)
{
    *out << row.name;
}

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
    ::testing::Values(
        LineRow{"Silence", [](const QByteArray&) { return QByteArray(); }, NoAnswer, "Id: Direct FBC0"},
        LineRow{"SilenceAfterTheModel", afterTheModel([](const QByteArray&) { return QByteArray(); }), NoAnswer,
                "Main: Direct 8000"},
        LineRow{"HalfAReply",
                [](const QByteArray& request) {
                    const QByteArray whole = soundController::reply(request);
                    return whole.left(whole.size() / 2);
                },
                NoAnswer, "Id: Direct FBC0"},
        LineRow{"Noise", noise, NoAnswer, "Id: Direct FBC0"},
        LineRow{"NoiseAfterTheModel", afterTheModel(noise), NoAnswer, "Main: Direct 8000"},
        LineRow{"WrongSlave", [](const QByteArray& request) { return fromSlave(2, soundController::reply(request)); },
                NoAnswer, "Id: Direct FBC0"},
        LineRow{"WrongSlaveAfterTheModel",
                afterTheModel([](const QByteArray& request) { return fromSlave(2, soundController::reply(request)); }),
                NoAnswer, "Main: Direct 8000"},
        LineRow{"Echo", [](const QByteArray& request) { return request; }, NoAnswer, "Id: Direct FBC0"},
        LineRow{"Exception", [](const QByteArray&) { return soundController::rtu(QByteArray::fromHex("01C202")); },
                NoAnswer, "exception 2"},
        LineRow{"ModelOfNoughts",
                [](const QByteArray& request) { return soundController::reply(request, QByteArray(14, '\0')); },
                WrongModel, "the controller is"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(BadInput, LineThatIsCutInTheMiddle)
{
    plug([this](const QByteArray& request) {
        if (soundController::asksFor(request, "0000FBC0"))
            return soundController::reply(request);
        controller->unplug();
        return QByteArray();
    });
    expectEnd(readJson(), NoAnswer, "check");
}

} // namespace
