#include "SimulatedCtlFixture.h"

namespace {

enum Status { Done = 0, Usage = 2, NoAnswer = 3, WrongModel = 4, BadFile = 5, Refused = 6 };

class EveryModel : public SimulatedCtl, public ::testing::WithParamInterface<const char*>
{};

// One parameter of each kind: bit, byte, word, register, float, and choices from a list and from both sorts of table.
TEST_P(EveryModel, TakesWhatIsSet)
{
    plugModel(QString::fromLatin1(GetParam()));
    const bool hasEvents = model == u"KX910";
    const QStringList pairs{QStringLiteral("RUNSTP=Stopped"),
                            QStringLiteral("LEDBRT=5"),
                            QStringLiteral("VQI1=240"),
                            QStringLiteral("VQMAN=12.5"),
                            QStringLiteral("VQGAIN=20.75"),
                            QStringLiteral("SVSEL=SV2"),
                            hasEvents ? QStringLiteral("PQKAL1=Operation event") : QStringLiteral("PQKAL1=Input error"),
                            QStringLiteral("PQRNO=E -200 to 900")};
    ASSERT_EQ(runWith(QStringList{QStringLiteral("set")} + pairs), Done) << errors.toStdString();
    EXPECT_EQ(output.toStdString(), (pairs.join(u'\n') + u'\n').toStdString());
    QStringList tags;
    for (const QString& pair : pairs)
        tags << pair.section(u'=', 0, 0);
    ASSERT_EQ(runWith(QStringList{QStringLiteral("get")} + tags), Done) << errors.toStdString();
    EXPECT_EQ(output.toStdString(), (pairs.join(u'\n') + u'\n').toStdString());
}

INSTANTIATE_TEST_SUITE_P(Shipped, EveryModel,
                         ::testing::Values("KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"),
                         [](const auto& row) { return std::string(row.param); });

struct TakenRow
{
    const char* name;
    const char* pairs;
    const char* printed;
    const char* memory; // what changed in the controller
};

TEST_F(SimulatedCtl, SetChangesNothingElse)
{
    for (const TakenRow& row :
         {TakenRow{"choice by its stored value", "SVSEL=1", "SVSEL=SV2\n", "MEM 800C 01"},
          TakenRow{"switch by its stored value", "RUNSTP=0", "RUNSTP=Stopped\n", "MEM 800E 00"},
          TakenRow{"switch that shares its byte", "EV2INV=1", "EV2INV=De-energized\n", "MEM 8406 02"},
          TakenRow{"a coil", "ALMRST=1", "ALMRST=Resetting\n", "COIL 2 1"},
          TakenRow{"upper limit itself", "VQI1=3600", "VQI1=3600\n", "MEM 8102 0E|MEM 8103 10"},
          TakenRow{"another form of the number", "VQSV1=1e1", "VQSV1=10.0\n", "MEM 8000 00|MEM 8001 64|REG 40001 100"},
          TakenRow{"limits as the values before make them", "VQSVH=390 VQSVL=-90", "VQSVH=390.0\nVQSVL=-90.0\n",
                   "MEM 8005 7C|MEM 8007 3C"},
          TakenRow{"limit that moves the set value", "VQSVH=100", "VQSVH=100.0\n",
                   "MEM 8000 03|MEM 8001 E8|MEM 8006 03|MEM 8007 E8|REG 40001 1000"},
          TakenRow{"control action that moves band and gap", "PIDONOF=1", "PIDONOF=ON/OFF\n",
                   "MEM 8101 00|MEM 8112 01"},
          TakenRow{"input range with all that depends on it", "PQRNO=1", "PQRNO=K -200 to 1370\n",
                   "MEM 8004 FF|MEM 8005 38|MEM 8006 05|MEM 8007 5A|MEM 800D 00|MEM 8200 FF|MEM 8201 38|MEM 8202 05|"
                   "MEM 8203 5A|MEM 820E FF|MEM 820F 38|MEM 8210 05|MEM 8211 5A|MEM 8212 FF|MEM 8213 38|MEM 8214 05|"
                   "MEM 8215 5A|MEM 8216 01|MEM 8219 00"}}) {
        SCOPED_TRACE(row.name);
        plugModel(QStringLiteral("KX410"));
        const QByteArray before = simulated->state();
        const QStringList pairs = QString::fromLatin1(row.pairs).split(u' ');
        EXPECT_EQ(runWith(QStringList{QStringLiteral("set")} + pairs), Done) << errors.toStdString();
        EXPECT_EQ(output.toStdString(), row.printed);
        EXPECT_EQ(changedMemory(before).join('|').toStdString(), row.memory);
    }
}

struct RefusedRow
{
    const char* name;
    const char* words; // blanks between them
    int status;
    const char* message;
};

TEST_F(SimulatedCtl, RefusedValueWritesNothing)
{
    plugModel(QStringLiteral("KX410"));
    const QByteArray before = simulated->state();
    for (const RefusedRow& row :
         {RefusedRow{"above", "set VQI1=3601", Refused, "[ 0 <= VQI1 <= 3600 ]"},
          RefusedRow{"below another parameter", "set VQSV1=-100.1", Refused, "[ -100.0 <= VQSV1 <= 400.0 ]"},
          RefusedRow{"equal to a limit that excludes it", "set VQOL1=100", Refused, "VQOL1 < "},
          RefusedRow{"above what an earlier value allows", "set VQSVH=100 VQSV1=200", Refused, "<= 100.0 ]"},
          RefusedRow{"contradicted by a later value", "set VQSV1=200 VQSVH=150", Refused,
                     "a later value makes it 150.0"},
          RefusedRow{"no number", "set VQI1=soon", Refused, "VQI1=soon: it is no number"},
          RefusedRow{"nothing", "set VQI1=", Refused, "it is no number"},
          RefusedRow{"not finite", "set VQGAIN=inf", Refused, "it is no number"},
          RefusedRow{"finer than the controller", "set VQSV1=25.84", Refused, "more decimal places than 1"},
          RefusedRow{"unknown choice", "set SVSEL=SV3", Refused, "\"SV1\", \"SV2\""},
          RefusedRow{"unknown stored value", "set SVSEL=2", Refused, "\"SV1\", \"SV2\""},
          RefusedRow{"other case", "set SVSEL=sv2", Refused, "\"SV1\", \"SV2\""},
          RefusedRow{"not in the table", "set PQRNO=Z", Refused, "\"K -200 to 1370\""},
          RefusedRow{"not a caption", "set RUNSTP=2", Refused, "\"Running\", \"Stopped\""},
          RefusedRow{"measured", "set VQPV=1", Refused, "VQPV=1: it is only read"},
          RefusedRow{"bit that is only read", "set STAL1=1", Refused, "it is only read"},
          RefusedRow{"text", "set MQCODE=KX41000000-10B", Refused, "it is only read"},
          RefusedRow{"locked", "set SVDOT=0", Refused, "locked"},
          RefusedRow{"one of two", "set VQI1=240 SVSEL=SV3", Refused, "nothing was written"},
          RefusedRow{"every fault is told", "set VQI1=x VQD1=y", Refused, "VQI1=x: it is no number; VQD1=y"},
          RefusedRow{"unknown tag", "set VQI1=240 NOPE=1", Usage, "\"NOPE\""},
          RefusedRow{"tag without its number", "set VQSV=1", Usage, "\"VQSV\""},
          RefusedRow{"tag that this model lacks", "set REMSEL=0", Usage, "\"REMSEL\""},
          RefusedRow{"no equals sign", "set VQI1 240", Usage, "\"VQI1\" is not TAG=VALUE"},
          RefusedRow{"no tag", "set =240", Usage, "\"=240\""},
          RefusedRow{"twice", "set VQI1=240 VQI1=250", Usage, "VQI1 is there twice"},
          RefusedRow{"get: unknown tag", "get VQI1 NOPE", Usage, "\"NOPE\""}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWith(QString::fromLatin1(row.words).split(u' ')), row.status) << output.toStdString();
        expectOneLineAbout(row.message);
        EXPECT_EQ(simulated->state(), before);
    }
}

TEST_F(SimulatedCtl, GetPrintsInTheOrderAsked)
{
    plugModel(QStringLiteral("KX410"));
    struct
    {
        const char* words;
        const char* printed;
    } const rows[] = {
        {"get VQI1 VQSV1", "VQI1=120\nVQSV1=120.0\n"},
        {"get VQSV1 --as csv", "tag,name,block,value,data\r\nVQSV1,Set value 1,Set values,120.0,1200\r\n"},
        {"get SVSEL --as json", "[\n  {\"tag\":\"SVSEL\",\"name\":\"Active set value\",\"block\":\"Set "
                                "values\",\"value\":\"SV1\",\"data\":\"0\"}\n]\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(runWith(QString::fromLatin1(row.words).split(u' ')), Done) << errors.toStdString();
        EXPECT_EQ(output.toStdString(), row.printed);
    }
}

// CONTROLLERS that do not do as they are told. A second one, which nobody reads, makes the replies to what is ignored.

enum class Behaviour { Ignores, Refuses, IsSilent, HangsUp };

struct BadControllerRow
{
    const char* name;
    Behaviour behaviour;
    const char* address; // the write that it concerns
    int status;
    const char* message;
};

class BadController : public SimulatedCtl
{
protected:
    int runWithBad(const BadControllerRow& row, const QStringList& command)
    {
        twin = makeModel(QStringLiteral("KX410"));
        hungUp = false;
        plugModel(QStringLiteral("KX410"), [this, row](const QByteArray& request) -> std::optional<QByteArray> {
            if (hungUp)
                return QByteArray();
            if (!isWrite(request) || !soundController::asksFor(request, row.address))
                return std::nullopt;
            hungUp = row.behaviour == Behaviour::HangsUp;
            return row.behaviour == Behaviour::Ignores   ? twin->answer(request)
                   : row.behaviour == Behaviour::Refuses ? simulated->answer(request, 4)
                                                         : QByteArray();
        });
        return runWith(QStringList{QStringLiteral("--timeout"), QStringLiteral("1")} + command);
    }

    std::unique_ptr<SimulatedController> twin;
    bool hungUp = false;
};

TEST_F(BadController, SetTellsWhatWasNotAccepted)
{
    for (const BadControllerRow& row :
         {BadControllerRow{"ignores", Behaviour::Ignores, "00008100", Refused, "VQI1 (sent 240, kept 120)"},
          BadControllerRow{"refuses", Behaviour::Refuses, "00008100", Refused, "exception 4"},
          BadControllerRow{"is silent to writes", Behaviour::IsSilent, "00008100", Refused, "Pid: Direct 8100"}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWithBad(row, {QStringLiteral("set"), QStringLiteral("VQI1=240")}), row.status);
        expectOneLineAbout(row.message);
    }
}

TEST_F(BadController, WriteTellsWhatWasNotAccepted)
{
    plugModel(QStringLiteral("KX410"));
    const QString file = savedSet("a.kx");
    changeValue(file, "VQI1", "240");
    changeValue(file, "SVSEL", "1");
    for (const BadControllerRow& row :
         {BadControllerRow{"ignores", Behaviour::Ignores, "00008100", Refused, "VQI1 (sent 240, kept 120); compare"},
          BadControllerRow{"refuses", Behaviour::Refuses, "00008000", Refused, "exception 4"},
          BadControllerRow{"hangs up", Behaviour::HangsUp, "00008D00", NoAnswer, "may have been written"}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWithBad(row, {QStringLiteral("write"), file}), row.status);
        expectOneLineAbout(row.message);
    }
}

TEST_F(SimulatedCtl, LineThatIsUnpluggedInAWrite)
{
    plugModel(QStringLiteral("KX410"), [this](const QByteArray& request) -> std::optional<QByteArray> {
        if (!isWrite(request))
            return std::nullopt;
        controller->unplug();
        return QByteArray();
    });
    EXPECT_EQ(runWith({QStringLiteral("set"), QStringLiteral("VQI1=240")}), NoAnswer);
    expectOneLineAbout("may have been written");
}

TEST_F(SimulatedCtl, InterruptEndsAWrite)
{
    plugModel(QStringLiteral("KX410"), [this](const QByteArray& request) -> std::optional<QByteArray> {
        if (!isWrite(request))
            return std::nullopt;
        kill(static_cast<pid_t>(process.processId()), SIGINT);
        return QByteArray();
    });
    EXPECT_EQ(runWith({QStringLiteral("set"), QStringLiteral("VQI1=240"), QStringLiteral("SVSEL=1")}), NoAnswer);
    expectOneLineAbout("interrupted; some parameters may have been written");
}

} // namespace
