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
            QString("RUNSTP=Stopped|LEDBRT=5|VQI1=240|VQMAN=12.5|VQGAIN=20.75|SVSEL=SV2|PQKAL1=%1|PQRNO=E -200 to 900")
                .arg(model == u"KX910" ? "Operation event" : "Input error")
                .split(u'|');
        const std::string lines = pairs.join('\n').toStdString() + '\n';
        expectPrints("set|" + pairs.join('|'), lines);
        expectPrints("get RUNSTP LEDBRT VQI1 VQMAN VQGAIN SVSEL PQKAL1 PQRNO", lines);
    }
}

TEST_F(SimulatedCtl, SetChangesNothingElse)
{
    for (const QStringList& row : tableRows("ctl/set_taken.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        plugModel("KX410");
        expectPrints("set " + row[1], row[2].toStdString());
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

TEST_F(SimulatedCtl, WhatAControllerDoesNotAcceptIsReported)
{
    enum Behaviour { Ignores, IsSilent, Interrupts, Unplugs };
    const std::tuple<QString, Behaviour, const char*, int, QString> rows[] = {
        {"set VQI1=240", Ignores, "00008100", Refused,
         "9600,N,8,1 RTU slave 1: the controller did not accept VQI1 (sent 240, kept 120)"},
        {"set VQI1=240", IsSilent, "00008100", Refused, "Pid: Direct 8100"},
        {"set VQI1=240", Unplugs, "00008100", NoAnswer, "may have been written"},
        {"set VQI1=240 SVSEL=1", Interrupts, "00008100", NoAnswer, "interrupted; some parameters may have"},
        {"write a.kx", Ignores, "00008100", Refused, "VQI1 (sent 240, kept 120); compare"},
        {"write a.kx", Interrupts, "00008D00", NoAnswer, "may have been written: read them"},
    };
    plugModel("KX410");
    save("a.kx");
    changeValue("a.kx", "VQI1", "240");
    for (const char* command : {"set VQI1=240", "write a.kx"}) {
        expectFails(QString("--read-only ") + command, Refused, "nothing was written: --read-only is given");
        expectPrints(QString("--read-only --dry-run --as csv ") + command,
                     "tag,name,block,class,held,new\r\nVQI1,Integral time,PID control,setting,120,240\r\n");
    }
    expectPrints("--dry-run set RUNSTP=Stopped --as table", "Tag     Name     Block       Class    Held     New\n"
                                                            "RUNSTP  Control  Set values  command  Running  Stopped\n");
    ASSERT_EQ(run("--dry-run set PQRNO=1"), Done);
    EXPECT_EQ(output.count('\n'), 12) << "with what the table of ranges sets besides: " << output.toStdString();
    EXPECT_EQ(changedMemory(), "");
    for (const auto& [command, behaviour, address, status, message] : rows) {
        const auto twin = makeModel(model); // nobody reads it: it makes the replies to what is ignored
        plugModel("KX410", [&, how = behaviour, where = address](const QByteArray& request) -> Answer {
            if (!isWrite(request) || !soundController::asksFor(request, where))
                return std::nullopt;
            if (how == Interrupts)
                kill(static_cast<pid_t>(process.processId()), SIGINT);
            if (how == Unplugs)
                controller->unplug();
            return how == Ignores ? twin->answer(request) : QByteArray();
        });
        expectFails("--timeout 1 " + command, status, message);
    }
}

} // namespace
