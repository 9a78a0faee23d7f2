// get and set, and controllers that do not do what they are asked.
#include "SimulatedCtlFixture.h"
#include "Table.h"

#include <csignal>

namespace {

// One parameter of each kind: bit, byte, word, register, float, and choices from a list and from both sorts of table.
TEST_F(SimulatedCtl, EveryModelHoldsWhatIsSet)
{
    for (const char* code : {"KX410", "KX643", "KX910"}) {
        plugModel(code);
        const QStringList pairs =
            QString(
                "RUNSTP=Stopped|LEDBRT=5|VQI1=240|VQMAN=12.5|VQGAIN=20.75|SVSEL=SV2|PQKAL1=%1|PQRNO=E: -200 to 900 °C")
                .arg(model == u"KX910" ? "Operation event" : "Input error")
                .split(u'|');
        const QString rows = printedRows("set|" + pairs.join('|'), Done, "tag kept") + '|';
        EXPECT_TRUE(rows.startsWith(pairs.join('|') + '|') && errors.contains("the decimal point moves"))
            << qPrintable(rows) << errors.data();
        EXPECT_EQ(output.count("\"outcome\":\"accepted\""), rows.count('|'));
        expectPrints("get RUNSTP LEDBRT VQI1 VQMAN VQGAIN SVSEL PQKAL1 PQRNO", pairs.join('\n').toStdString() + '\n');
    }
}

// The options come from the controller: parameters that only they bring can be set, and nothing is said of it.
TEST_F(SimulatedCtl, OptionsAreThoseOfTheController)
{
    plugModel("KX410");
    simulated = makeModel(model, "11110-10A");
    EXPECT_EQ(run("set VQRBIA=5"), Done);
    EXPECT_TRUE(output.contains("VQRBIA") && errors.isEmpty()) << output.data() << errors.data();
}

TEST_F(SimulatedCtl, SetChangesNothingElse)
{
    for (const QStringList& row : tableRows("ctl/set_taken.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        plugModel("KX410");
        EXPECT_EQ(printedRows("set " + row[1], Done, "tag kept cause").toStdString(), row[2].toStdString());
        EXPECT_EQ(output.count("\"outcome\":\"accepted\""), row[2].count('|') + 1);
        EXPECT_EQ(changedMemory(), row[3].toStdString());
    }
}

TEST_F(SimulatedCtl, RefusedCommandWritesNothing)
{
    plugModel("KX410");
    for (const QStringList& row : tableRows("ctl/refused_commands.tsv"))
        expectFails(row[1], row[2].toInt(), row[3]);
    EXPECT_EQ(changedMemory(), "");
}

TEST_F(SimulatedCtl, DryRunPrintsAndSendsNothing)
{
    plugModel("KX410");
    save("a.kx");
    changeValue("a.kx", "VQI1", "240");
    for (const char* command : {"set VQI1=240", "write a.kx"}) {
        expectFails(QString("--read-only ") + command, Refused, "nothing was written: --read-only is given");
        EXPECT_EQ(printedRows(QString("--read-only --dry-run ") + command, Done, "tag class held new outcome kept"),
                  "VQI1=setting=120=240=would be sent=120");
    }
    expectPrints("--dry-run set RUNSTP=Stopped --as table",
                 "Tag     Name      Block       Class    Cause  Held     New      Outcome        Reason  Kept\n"
                 "RUNSTP  Run/stop  Set values  command  typed  Running  Stopped  would be sent          Running\n");
    EXPECT_EQ(printedRows("--dry-run set VQSV1=25.85", Done, "new unit kept"), "25.8=°C=120.0");
    ASSERT_EQ(run("--dry-run set PQRNO=1"), Done);
    EXPECT_EQ(output.count("followed from PQRNO"), 10) << output.toStdString();
    EXPECT_EQ(changedMemory(), "");
}

enum class Behaviour { Ignores, Refuses, IsSilent, GoesSilent, Interrupts, Unplugs, UnplugsBefore, IsOperated };

class Misbehaving : public SimulatedCtl
{
protected:
    // When the address is first written, or, before a write, when it is read the second time.
    void plugMisbehaving(Behaviour how, const char* address)
    {
        twin = makeModel("KX410"); // nobody reads it: it makes the replies to what is ignored
        plugModel("KX410", [this, how, address](const QByteArray& request) -> Answer {
            if (!soundController::asksFor(request, address))
                return isSilent ? Answer(QByteArray()) : std::nullopt;
            const bool isBefore = how == Behaviour::IsOperated || how == Behaviour::UnplugsBefore;
            const bool isHit = isBefore ? !isWrite(request) && ++looks == 2 : isWrite(request);
            isSilent = isSilent || (isHit && how == Behaviour::GoesSilent);
            return isHit || isSilent ? reply(how, request) : std::nullopt;
        });
        looks = 0;
        isSilent = false;
        isPoked = false;
    }

    Answer reply(Behaviour how, const QByteArray& request)
    {
        if (how == Behaviour::IsOperated) {
            isPoked = simulated->poke(0x8102, QByteArray::fromHex("0082")).ok();
            return std::nullopt;
        }
        if (how == Behaviour::Interrupts)
            kill(static_cast<pid_t>(process.processId()), SIGINT);
        if (how == Behaviour::Unplugs || how == Behaviour::UnplugsBefore)
            controller->unplug();
        return how == Behaviour::Ignores   ? twin->answer(request)
               : how == Behaviour::Refuses ? twin->answer(request, 4)
                                           : QByteArray();
    }

    std::unique_ptr<SimulatedController> twin;
    int looks = 0;
    bool isSilent = false;
    bool isPoked = false;
};

TEST_F(Misbehaving, OutcomeOfEveryRowIsPrintedWithTheFailure)
{
    using enum Behaviour;
    const std::tuple<QString, Behaviour, const char*, int, QString, QString> rows[] = {
        {"set VQI1=240", Ignores, "00008100", Refused,
         "9600,N,8,1 RTU slave 1: the controller did not accept Integral time [VQI1] (written 240 s, kept 120 s); see",
         "VQI1=not accepted==120"},
        {"write a.kx", Ignores, "00008100", Refused, "accept Integral time [VQI1] (written 240 s, kept 120 s)",
         "VQSV2=accepted==110.0|VQI1=not accepted==120"},
        {"set VQI1=240", Refuses, "00008100", Refused,
         "failed: Integral time [VQI1] (the controller refused the request (exception 4, device failure)); read",
         "VQI1=failed=the controller refused the request (exception 4, device failure)=120"},
        {"set VQI1=240 SVSEL=1", IsSilent, "00008100", Refused, "failed: Integral time [VQI1] (Time-out); read",
         "VQI1=failed=Time-out=120|SVSEL=accepted==SV2"},
        {"write a.kx", GoesSilent, "00008000", NoAnswer, "request failed: Set: Direct 8000",
         "VQSV2=failed=Time-out=|VQI1=failed=Time-out="},
        {"set VQI1=240", Unplugs, "00008100", NoAnswer, "may have been written", "VQI1=failed=comEventDCB="},
        {"set VQI1=240 SVSEL=1", Interrupts, "00008000", NoAnswer, "interrupted; some parameters may have",
         "VQI1=not sent=the write ended before it=120|SVSEL=failed=It was cancelled.="},
        {"write a.kx", Interrupts, "00008000", NoAnswer, "may have been written: read them",
         "VQSV2=failed=It was cancelled.=|VQI1=not sent=the write ended before it=120"},
        {"write a.kx", IsOperated, "00008100", Refused,
         "the controller changed while this ran: Integral time [VQI1] was 120 s, is 130 s; read it and repeat",
         "VQSV2=accepted==110.0|VQI1=conflict=the controller holds another value by now=130"},
        {"set VQI1=240", IsOperated, "00008100", Refused, "Integral time [VQI1] was 120 s, is 130 s",
         "VQI1=conflict=the controller holds another value by now=130"},
    };
    plugModel("KX410");
    save("a.kx");
    changeValue("a.kx", "VQI1", "240");
    changeValue("a.kx", "VQSV2", "1100");
    for (const auto& [command, behaviour, address, status, message, printed] : rows) {
        SCOPED_TRACE(qPrintable(command + ' ' + message));
        plugMisbehaving(behaviour, address);
        EXPECT_EQ(printedRows("--timeout 1 " + command, status, "tag outcome reason kept").toStdString(),
                  printed.toStdString());
        EXPECT_TRUE(errors.contains(message.toUtf8()) && errors.count('\n') == 1) << errors.toStdString();
        EXPECT_EQ(isPoked, behaviour == IsOperated);
    }
}

TEST_F(Misbehaving, NothingIsSentWhenTheLineIsLostBeforeTheWrite)
{
    plugMisbehaving(Behaviour::UnplugsBefore, "00008100");
    EXPECT_EQ(printedRows("set VQI1=240", NoAnswer, "tag outcome kept"), "VQI1=not sent=120");
    EXPECT_TRUE(errors.contains("try again") && !errors.contains("written")) << errors.toStdString();
}

TEST_F(SimulatedCtl, WriteThatIsKilledIsInterruptedInTheHistory)
{
    plugModel("KX410", [this](const QByteArray& request) -> Answer {
        if (isWrite(request))
            kill(static_cast<pid_t>(process.processId()), SIGKILL);
        return std::nullopt;
    });
    EXPECT_EQ(run("set VQI1=240 SVSEL=SV2"), -2);
    platform::PortLock::of(controller->device()).removeAbandoned(); // no other test meets it
    EXPECT_EQ(printedRows("history", Done, "tag outcome old new unit"),
              "SVSEL=interrupted=SV1=SV2=|VQI1=interrupted=120=240=s");
}

TEST_F(SimulatedCtl, NothingIsWrittenWithoutTheHistoryUnlessToldSo)
{
    plugModel("KX410");
    ASSERT_TRUE(QDir().mkpath(path("state")));
    put("state/vorlant", "in the way");
    EXPECT_EQ(printedRows("set VQI1=240", BadFile, "tag outcome kept"), "VQI1=not sent=120");
    EXPECT_TRUE(errors.contains("cannot be entered in the history") && errors.contains("--no-backup")) << errors.data();
    EXPECT_EQ(changedMemory(), "");
    EXPECT_EQ(printedRows("set VQI1=240 --no-backup", Done, "tag outcome kept"), "VQI1=accepted=240");
    EXPECT_TRUE(errors.contains("the write is not in the history: ")) << errors.toStdString();
    EXPECT_EQ(changedMemory(), "MEM 8103 F0");
}

} // namespace
