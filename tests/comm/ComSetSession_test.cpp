#include "ComSetSession.h"

#include "DetectionFixture.h"
#include "RecordingMessages.h"
#include "RecordingOwner.h"
#include "clsCfg.h"

#include <QDir>
#include <QFile>

namespace {

const QByteArray kCatalogue = "[KXInfos]\nKXMaxCount=6\nKXModel1=KX410\nKXModel2=KX413\nKXModel3=KX620A\n"
                              "KXModel4=KX620B\nKXModel5=KX6\n";
const char* const kKX620 = "KX62000000-10A";
const char* const kRange = "It is outside the setting range.[ 1 <= X <= 99 ]";
const char* const kNoResponse = "There was no response.\nTime-out";
const char* const kOtherModel = "It does not correspond to this model.";

class Session : public DetectionFixture
{
protected:
    Session()
    {
        box.context.settings = settings;
        box.context.messages = messages;
    }

    // lines: of section "Comm1".
    ComSetFields open(const QByteArray& lines = {})
    {
        writeSettings(kCatalogue + "[Comm1]\n" + lines);
        session.reset();
        mainLink = std::make_unique<uclComm>(ports, box.clock);
        mainLink->init(1, &library);
        owner = std::make_unique<RecordingOwner>(*mainLink);
        session = std::make_unique<ComSetSession>(ComSetSession::Parts{*owner, ports, library, QString()});
        return session->open();
    }

    std::unique_ptr<uclComm> mainLink;
    std::unique_ptr<RecordingOwner> owner;
    clsCfg settings;
    RecordingMessages::Record told;
    RecordingMessages messages{told};
    std::unique_ptr<ComSetSession> session;
};

TEST_F(Session, SlaveNumbersOutsideTheRangeTouchNoPort)
{
    plug(kKX620);
    const ComSetFields opened = open();
    const QByteArray before = settingsFile();
    for (const char* text : {"0", "100", "-1", "", "x", "1", "99"}) {
        const bool good = text == std::string("1") || text == std::string("99");
        ComSetFields fields = opened;
        fields.slaveText = QString::fromLatin1(text);
        fields.speedText = QStringLiteral("19200bps");
        told.texts.clear();
        const int asked = controller->requests();
        const DetectionResult result = session->detect(fields);
        EXPECT_EQ(result, good ? DetectionResult::Found : DetectionResult::Stopped) << text;
        EXPECT_EQ(told.texts, good ? QStringList() : QStringList{QString::fromLatin1(kRange)}) << text;
        EXPECT_EQ(controller->requests() - asked, good ? 1 : 0) << text;
        EXPECT_EQ(session->confirm(fields), good) << text;
    }
    EXPECT_EQ(settingsFile(), before) << "a detection saves nothing";
}

TEST_F(Session, TheTimeOutIsCheckedUsedAndStored)
{
    plug(kKX620);
    ComSetFields fields = open("RecieveTimeOut(ms)=900\n");
    EXPECT_EQ(fields.timeOutText, u"900");
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"49", false, ""}, {"3600001", false, ""}, {"1 s", false, ""}, {" 300 ", true, "=300"}, {"", true, ""}};
    for (const auto& [text, good, stored] : rows) {
        SCOPED_TRACE(text);
        fields = open();
        fields.timeOutText = QString::fromLatin1(text);
        told.texts.clear();
        EXPECT_EQ(session->confirm(fields), good);
        EXPECT_EQ(told.texts.join(u'|'), good ? u"" : u"It is outside the setting range.[ 50 <= X <= 3600000 ]");
        if (!good)
            continue;
        session->apply(fields);
        EXPECT_EQ(mainLink->timeOutMs().has_value(), *text != 0);
        EXPECT_TRUE(*text == 0 || settingsFile().contains(QByteArray("RecieveTimeOut(ms)") + stored));
    }
}

// With the settings of the fields first; what was found goes into the fields, also a format beside the usual two.
TEST_F(Session, SearchesAndTakesWhatWasFound)
{
    plug([this](const QByteArray& request) {
        const bool isIt = request.startsWith(':') && request.mid(1, 2) == "2A";
        if (!isIt)
            idle->touch();
        return isIt ? modbusframe::toWire(QByteArray::fromHex("2A42000E") + kKX620, true) : QByteArray();
    });
    ComSetFields fields = open("CommSpeed=38401\nCommProtocolCharacter=E,7,2\n");
    idle.emplace(box.clock, 100);
    fields.ascii = true;
    std::optional<ScanFind> found;
    QObject::connect(&session->scan(), &ControllerScan::found, session.get(), [&](const ScanFind& find) {
        found = find;
        session->stop();
    });
    EXPECT_FALSE(session->search(fields));
    ASSERT_TRUE(found);
    ComSetFields taken = session->open();
    session->takeFind(*found, taken);
    EXPECT_EQ(QStringList({taken.speedText, taken.chara, taken.slaveText, taken.modelString}).join(u' '),
              u"38401bps E,7,2 42 KX62000000-10A");
    EXPECT_TRUE(taken.ascii && taken.port.number == 1 && taken.modelPosition == 2);
    EXPECT_EQ(session->otherChara(), u"E,7,2");
}

// On OK. The answer is the controller's at FBC0 and FBC8; one notice at most, and nothing is applied yet.
TEST_F(Session, ConfirmsAModelThatIsKnown)
{
    const struct
    {
        bool offLine;
        const char* modelString; // before
        const char* answer;
        bool valid;
        const char* message; // "" for none
        const char* after;
    } rows[] = {{false, "", kKX620, true, "", kKX620},
                {false, kKX620, "#silent", false, kNoResponse, "Nothing"},
                {false, "", "KX99900000-10A", false, kOtherModel, "KX99900000-10A"},
                {true, kKX620, "#silent", true, "", kKX620},
                {true, "KX62000000-10", "#silent", false, kOtherModel, "KX62000000-10"}, // 13 characters
                {true, "KX64000000-10A", "#silent", false, kOtherModel, "KX64000000-10A"},
                {true, "KX99900000-10A", "#silent", false, kOtherModel, "KX99900000-10A"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.modelString);
        told = {};
        plug(row.answer, row.answer);
        ComSetFields fields = open();
        settings.m_bComm = row.offLine;
        fields.modelString = QString::fromLatin1(row.modelString);
        EXPECT_EQ(session->confirm(fields), row.valid);
        EXPECT_EQ(owner->states, QList<int>{row.valid ? 1 : 0});
        EXPECT_EQ(told.texts.join(u'|').toStdString(), row.message);
        EXPECT_EQ(fields.modelString.toStdString(), row.after);
        EXPECT_EQ(fields.modelPosition, row.valid ? 2 : 1) << "in the catalogue";
        EXPECT_EQ(controller->requests() == 0, row.offLine);
        EXPECT_TRUE(owner->calls.isEmpty());
    }
}

TEST_F(Session, WhereSettingsCannotBeKeptTheBuiltInModelsAreOffered)
{
    plug(kKX620);
    open();
    ASSERT_TRUE(QFile::remove(box.path(kSettings)) && QDir().mkdir(box.path(kSettings)));
    ComSetFields fields = session->open();
    EXPECT_EQ(session->modelCodes().size(), 7);
    ASSERT_TRUE(session->confirm(fields));
    session->apply(fields);
    ASSERT_EQ(told.texts.size(), 1);
    EXPECT_TRUE(told.texts[0].startsWith(u"The settings were not saved: ")) << qPrintable(told.texts[0]);
}

// What is plugged in from look to look, what COM1 is, the number chosen; what is offered in the end ("-": not plugged
// in), and what has become of the choice.
TEST_F(Session, TheChoiceStaysWithItsAdapter)
{
    const std::tuple<const char*, const char*, int, const char*, int> rows[] = {
        {"b|ab", "", 1, "1a 2b", 2}, {"ab|b", "", 1, "1b", 0},         {"ab|b|ab", "", 1, "1a 2b", 1},
        {"a|", "", 1, "1-", 1},      {"a||b", "", 1, "1b", 0},         {"|a", "", 1, "1a", 1},
        {"a|a", "", 3, "1a 3-", 3},  {"a|ac", "b", 1, "1-b 2a 3c", 1}, {"a|ab|bc", "b", 1, "1b 2c", 1}};
    for (const auto& [looks, setting, number, offers, follows] : rows) {
        SCOPED_TRACE(std::string(looks) + setting);
        writeSettings(QByteArray("[Ports]\nCOM1=") + setting + '\n');
        OfferedPorts offered(ports, library);
        PortChoice choice{number, QString(), QString()};
        for (const QString& plugged : QString(looks).split('|')) {
            machine.clear();
            for (const QChar device : plugged)
                machine.append({device});
            (void)offered.look(choice);
        }
        QStringList texts;
        for (const platform::ComPort& port : offered.list())
            texts << QString::number(port.number) + (port.isPluggedIn ? "" : "-") + port.device;
        EXPECT_EQ(texts.join(u' '), offers);
        EXPECT_EQ(choice.number, follows);
    }
}

TEST_F(Session, OkKeepsTheAdapterByItsLastingName)
{
    plug(kKX620);
    const QString device = controller->device();
    const QString name = byId.filePath("A1");
    machine = {platform::ComPort{device}};
    ASSERT_TRUE(QFile::link(device, name));
    // The device of COM1 for this run, what its key holds before, the port that is typed; what the key holds then.
    const QString rows[][4] = {
        {"", "", "", name}, {device, "", "", ""}, {"", device, "", device}, {"", "", device, ""}};
    for (const auto& [run, before, typed, after] : rows) {
        SCOPED_TRACE(qPrintable(run + '|' + before + '|' + typed));
        ports.assign(1, run);
        ComSetFields fields = open("[Ports]\nCOM1=" + before.toUtf8() + '\n');
        if (!typed.isEmpty())
            fields.port = PortChoice::of(typed);
        ASSERT_TRUE(session->confirm(fields));
        session->apply(fields);
        EXPECT_EQ(portSetting("COM1"), after);
        EXPECT_EQ(mainLink->device(), device);
    }
}

// A port and a format outside the lists are kept.
TEST_F(Session, AppliesEverythingAndReads)
{
    plug(kKX620);
    ports.assign(12, controller->device());
    ComSetFields fields = open("CommPortNo=12\nCommProtocolCharacter=E,8,2\n");
    EXPECT_EQ(session->otherChara(), u"E,8,2");
    fields.speedText = QStringLiteral("19200bps");
    fields.slaveText = QStringLiteral("42");
    ASSERT_TRUE(session->confirm(fields));
    fields.ascii = true;
    session->apply(fields);
    EXPECT_EQ(owner->calls.join(u'|'), u"take 42,1,2,KX62000000-10A|read, link 1");
    EXPECT_EQ(mainLink->Port(), 12);
    const QByteArray saved = settingsFile();
    for (const char* line : {"CommPortNo=12", "CommSpeed=19200", "CommProtocolCharacter=E,8,2"})
        EXPECT_TRUE(saved.contains(line)) << line;
}

} // namespace
