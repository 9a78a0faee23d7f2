#include "ComSetSession.h"

#include "DetectionFixture.h"
#include "RecordingMessages.h"
#include "RecordingOwner.h"
#include "clsCfg.h"

namespace {

const QByteArray kCatalogue = "[KXInfos]\nKXMaxCount=4\nKXModel1=KX410\nKXModel2=KX413\nKXModel3=KX620\n";
const char* const kKX620 = "KX62000000-10A";
const char* const kRange = "It is outside the setting range.[ 1 <= X <= 99 ]";
const char* const kNoResponse = "There was no response.";
const char* const kOtherModel = "It does not correspond to this model.";

class Session : public DetectionFixture
{
protected:
    Session()
    {
        box.context.settings = &settings;
        box.context.messages = &messages;
    }

    // lines: of section "Comm1".
    ComSetFields open(const QByteArray& lines = {})
    {
        writeSettings(kCatalogue + "[Comm1]\n" + lines);
        mainLink = std::make_unique<uclComm>(ports, box.clock);
        mainLink->init(1, &library);
        if (!owner)
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

struct Opening
{
    const char* name;
    const char* settings;
    int portPosition;
    const char* speedText;
    bool sevenBits;
    int speeds;
    const char* speed; // as it is applied
};

void PrintTo(const Opening& row, std::ostream* out)
{
    *out << row.name;
}

class SessionOpening : public Session, public ::testing::WithParamInterface<Opening>
{};

TEST_P(SessionOpening, ShowsTheLineOfTheSettings)
{
    plug(kSilent);
    const ComSetFields fields = open(GetParam().settings);
    EXPECT_EQ(fields.portPosition, GetParam().portPosition);
    EXPECT_EQ(fields.speedText.toStdString(), GetParam().speedText);
    EXPECT_EQ(fields.sevenBits, GetParam().sevenBits);
    EXPECT_EQ(session->speedTexts().size(), GetParam().speeds);
    EXPECT_TRUE(session->speedTexts().contains(fields.speedText));
    EXPECT_EQ(ComSetSession::speed(fields).toStdString(), GetParam().speed);
    EXPECT_EQ(ComSetSession::chara(fields), GetParam().sevenBits ? u"E,7,1" : u"N,8,1");
    EXPECT_EQ(ComSetSession::portNumber(fields), GetParam().portPosition + 1);
}

INSTANTIATE_TEST_SUITE_P(
    All, SessionOpening,
    ::testing::Values(Opening{"Defaults", "", 0, "9600bps", false, 2, "9600"},
                      Opening{"Fast", "CommSpeed=19200\nCommPortNo=9\n", 8, "19200bps", false, 2, "19200"},
                      Opening{"SevenBits", "CommProtocolCharacter=E,7,1\n", 0, "9600bps", true, 2, "9600"},
                      Opening{"SpeedOutsideTheList", "CommSpeed=38400\n", 0, "38400bps", false, 3, "38400"},
                      Opening{"SpeedInsideAnother", "CommSpeed=600\n", 0, "600bps", false, 3, "600"},
                      Opening{"PortOutsideTheList", "CommPortNo=12\n", -1, "9600bps", false, 2, "9600"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Session, ShowsTheControllerInUse)
{
    plug(kSilent);
    const ComSetFields fields = open();
    EXPECT_EQ(fields.slaveText, u"7");
    EXPECT_FALSE(fields.ascii);
    EXPECT_EQ(fields.modelPosition, 1);
    EXPECT_EQ(fields.modelString, u"KX41300000-10A");
    EXPECT_EQ(session->modelCodes().join(u','), u"KX410,KX413,KX620,KX4") << "a missing code is KX and its number";
    EXPECT_EQ(session->pickModel(2), u"KX62000000-10A");
    EXPECT_EQ(session->pickModel(-1), QString());
}

TEST_F(Session, TheListShowsTheDeviceBesideThePort)
{
    plug(kSilent);
    open();
    EXPECT_EQ(session->portTexts().size(), 9);
    EXPECT_EQ(session->portTexts().at(0), QStringLiteral("COM1  ") + controller->device());
}

TEST_F(Session, HoldsThePortWhileItIsOpen)
{
    plug(kSilent);
    open();
    EXPECT_EQ(mainLink->State(), 0);
    EXPECT_EQ(session->portTrouble(0), QString());
    session->dismiss();
    EXPECT_EQ(mainLink->State(), 1);
    EXPECT_EQ(owner->states, QList<int>{0});
    mainLink->termComm();
    session.reset();
    EXPECT_EQ(mainLink->State(), 0) << "given back once";
}

TEST_F(Session, GivesThePortBackWhenItGoes)
{
    plug(kSilent);
    open();
    session.reset();
    EXPECT_EQ(mainLink->State(), 1);
}

TEST_F(Session, TellsWhyAPortCannotBeUsed)
{
    ports.assign(1, box.dir.filePath(QStringLiteral("no-adapter")));
    ports.assign(2, QStringLiteral("/dev/null"));
    ComSetFields fields = open();
    EXPECT_TRUE(session->portTrouble(0).contains(u"no-adapter")) << qPrintable(session->portTrouble(0));
    EXPECT_EQ(session->portTrouble(1), QString()) << "not tried yet";
    fields.portPosition = 1;
    EXPECT_EQ(session->detect(fields), DetectionResult::NoAnswer);
    EXPECT_TRUE(session->portTrouble(1).contains(u"/dev/null"));
    EXPECT_EQ(told.texts, QStringList{QString::fromLatin1(kNoResponse)});
    EXPECT_EQ(fields.modelString, u"Nothing");
}

struct SlaveText
{
    const char* text;
    bool good;
};

TEST_F(Session, SlaveNumbersOutsideTheRangeTouchNoPort)
{
    plug(kKX620);
    const ComSetFields opened = open();
    const QByteArray before = settingsFile();
    for (const SlaveText& row :
         {SlaveText{"0", false}, {"100", false}, {"-1", false}, {"", false}, {"x", false}, {"1", true}, {"99", true}}) {
        ComSetFields fields = opened;
        fields.slaveText = QString::fromLatin1(row.text);
        fields.speedText = QStringLiteral("19200bps");
        told.texts.clear();
        const int asked = controller->requests();
        const DetectionResult result = session->detect(fields);
        EXPECT_EQ(result, row.good ? DetectionResult::Found : DetectionResult::Stopped) << row.text;
        EXPECT_EQ(told.texts, row.good ? QStringList() : QStringList{QString::fromLatin1(kRange)}) << row.text;
        EXPECT_EQ(controller->requests() - asked, row.good ? 1 : 0) << row.text;
        EXPECT_EQ(session->confirm(fields), row.good) << row.text;
    }
    EXPECT_EQ(settingsFile(), before) << "a detection saves nothing";
}

struct Check
{
    const char* name;
    bool offLine;
    const char* modelString; // before
    const char* answer;      // at FBC0 and FBC8
    bool valid;
    const char* message; // "" for none
    const char* after;
    int position;
};

void PrintTo(const Check& row, std::ostream* out)
{
    *out << row.name;
}

class SessionCheck : public Session, public ::testing::WithParamInterface<Check>
{
public:
    static constexpr const char* kS = kSilent;
    static constexpr const char* kD = kDamaged;
};

TEST_P(SessionCheck, OnOk)
{
    const Check& row = GetParam();
    plug(row.answer, row.answer);
    ComSetFields fields = open();
    settings.m_bComm = row.offLine;
    fields.modelString = QString::fromLatin1(row.modelString);
    EXPECT_EQ(session->confirm(fields), row.valid);
    EXPECT_EQ(owner->states, QList<int>{row.valid ? 1 : 0});
    EXPECT_EQ(told.texts.join(u'|').toStdString(), row.message) << "one notice at most";
    EXPECT_EQ(fields.modelString.toStdString(), row.after);
    EXPECT_EQ(fields.modelPosition, row.position);
    EXPECT_EQ(controller->requests() == 0, row.offLine);
    EXPECT_TRUE(owner->calls.isEmpty()) << "nothing is applied yet";
}

INSTANTIATE_TEST_SUITE_P(
    All, SessionCheck,
    ::testing::Values(
        Check{"OnLineFound", false, "", kKX620, true, "", kKX620, 2},
        Check{"OnLineTheOldStringDoesNotCount", false, kKX620, SessionCheck::kS, false, kNoResponse, "Nothing", 1},
        Check{"OnLineUnknown", false, kKX620, "KX99900000-10A", false, kOtherModel, "KX99900000-10A", 1},
        Check{"OnLineDamaged", false, kKX620, SessionCheck::kD, false, kNoResponse, "", 1},
        Check{"OffLineKnown", true, kKX620, SessionCheck::kS, true, "", kKX620, 2},
        Check{"OffLineUnknown", true, "KX99900000-10A", SessionCheck::kS, false, kOtherModel, "KX99900000-10A", 1},
        Check{"OffLineShort", true, "KX620", SessionCheck::kS, false, kOtherModel, "KX620", 1},
        Check{"OffLineNothing", true, "Nothing", SessionCheck::kS, false, kOtherModel, "Nothing", 1}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Session, OffLineTheSlaveNumberIsCheckedToo)
{
    plug(kSilent);
    ComSetFields fields = open();
    settings.m_bComm = true;
    fields.slaveText = QStringLiteral("100");
    EXPECT_FALSE(session->confirm(fields));
    EXPECT_EQ(told.texts, QStringList{QString::fromLatin1(kRange)});
    EXPECT_EQ(owner->states, QList<int>{0});
}

TEST_F(Session, AppliesEverythingAndReads)
{
    plug(kKX620);
    ComSetFields fields = open();
    fields.speedText = QStringLiteral("19200bps");
    fields.sevenBits = true;
    fields.slaveText = QStringLiteral("42");
    ASSERT_TRUE(session->confirm(fields));
    fields.ascii = true;
    session->apply(fields);
    EXPECT_EQ(owner->calls.join(u'|'), u"take 42,1,2,KX62000000-10A|read, link 1");
    const QByteArray saved = settingsFile();
    for (const char* line : {"CommPortNo=1", "CommSpeed=19200", "CommProtocolCharacter=E,7,1"})
        EXPECT_TRUE(saved.contains(line)) << line;
}

TEST_F(Session, APortOutsideTheListIsKept)
{
    plug(kKX620);
    ports.assign(12, controller->device());
    ComSetFields fields = open("CommPortNo=12\n");
    ASSERT_TRUE(session->confirm(fields));
    session->apply(fields);
    EXPECT_EQ(mainLink->Port(), 12);
    EXPECT_TRUE(settingsFile().contains("CommPortNo=12"));
}

TEST_F(Session, StoppedCheckKeepsTheString)
{
    plug([this](const QByteArray&) {
        QTimer::singleShot(0, &pulse, [this] { session->stop(); });
        return QByteArray();
    });
    ComSetFields fields = open();
    EXPECT_FALSE(session->confirm(fields));
    EXPECT_EQ(fields.modelString, u"KX41300000-10A");
    EXPECT_TRUE(told.texts.isEmpty());
}

} // namespace
