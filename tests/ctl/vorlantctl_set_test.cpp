#include "SimulatedCtlFixture.h"
#include "Table.h"

#include <csignal>

namespace {

enum Status { Done = 0, NoAnswer = 3, Refused = 6 };

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

TEST_F(SimulatedCtl, SetChangesNothingElse)
{
    for (const QStringList& row : tableRows("ctl/set_taken.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        plugModel(QStringLiteral("KX410"));
        const QByteArray before = simulated->state();
        EXPECT_EQ(runWith(QStringList{QStringLiteral("set")} + row[1].split(u' ')), Done) << errors.toStdString();
        EXPECT_EQ(output.toStdString(), row[2].toStdString());
        EXPECT_EQ(changedMemory(before).join('|').toStdString(), row[3].toStdString());
    }
}

TEST_F(SimulatedCtl, RefusedValueWritesNothing)
{
    plugModel(QStringLiteral("KX410"));
    const QByteArray before = simulated->state();
    for (const QStringList& row : tableRows("ctl/set_refused.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        EXPECT_EQ(runWith(row[1].split(u' ')), row[2].toInt()) << output.toStdString();
        expectOneLineAbout(qPrintable(row[3]));
        EXPECT_EQ(simulated->state(), before);
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
        return runWith(words("--timeout 1") + command);
    }

    std::unique_ptr<SimulatedController> twin;
    bool hungUp = false;
};

TEST_F(BadController, SetTellsWhatWasNotAccepted)
{
    for (const BadControllerRow& row :
         {BadControllerRow{"ignores", Behaviour::Ignores, "00008100", Refused, "VQI1 (sent 240, kept 120)"},
          BadControllerRow{"is silent to writes", Behaviour::IsSilent, "00008100", Refused, "Pid: Direct 8100"}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWithBad(row, words("set VQI1=240")), row.status);
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
          BadControllerRow{"hangs up", Behaviour::HangsUp, "00008D00", NoAnswer, "may have been written"}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWithBad(row, {QStringLiteral("write"), file}), row.status);
        expectOneLineAbout(row.message);
    }
}

TEST_F(SimulatedCtl, InterruptEndsAWrite)
{
    plugModel(QStringLiteral("KX410"), [this](const QByteArray& request) -> std::optional<QByteArray> {
        if (!isWrite(request))
            return std::nullopt;
        kill(static_cast<pid_t>(process.processId()), SIGINT);
        return QByteArray();
    });
    EXPECT_EQ(runWith(words("set VQI1=240 SVSEL=1")), NoAnswer);
    expectOneLineAbout("interrupted; some parameters may have been written");
}

TEST_F(SimulatedCtl, LineThatIsUnpluggedInAWrite)
{
    plugModel(QStringLiteral("KX410"), [this](const QByteArray& request) -> std::optional<QByteArray> {
        if (!isWrite(request))
            return std::nullopt;
        controller->unplug();
        return QByteArray();
    });
    EXPECT_EQ(runWith(words("set VQI1=240")), NoAnswer);
    expectOneLineAbout("may have been written");
}

} // namespace
