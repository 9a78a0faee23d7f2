// The commands that look: read, detect, models, ports.
#include "VorlantCtlFixture.h"

#include <csignal>

namespace {

TEST_F(VorlantCtl, ReadPrintsTheControllersValues)
{
    plugSound();
    expectPrints(
        "read --as json --speed 19200",
        "[\n  {\"tag\":\"MQCODE\",\"name\":\"Model\",\"block\":\"\",\"value\":\"KX41000000-10A\",\"data\":"
        "\"KX41000000-10A\",\"unit\":\"\"},\n"
        "  {\"tag\":\"VQSV1\",\"name\":\"設定値\",\"block\":\"\",\"value\":\"25.8\",\"data\":\"258\",\"unit\":\"\"},\n"
        "  {\"tag\":\"PQB1\",\"name\":\"\",\"block\":\"\",\"value\":\"42\",\"data\":\"42\",\"unit\":\"\"}\n]\n");
    const QByteArray settings = contentOf("config/Vorlan/Vorlant.ini");
    EXPECT_TRUE(settings.contains("CommSpeed=9600") && !settings.contains(controller->device().toUtf8()))
        << "options do not reach the settings\n"
        << settings.toStdString();
    expectPrints("read -o out.csv --as csv", "");
    EXPECT_EQ(run("read --stats"), Done);
    EXPECT_TRUE(errors.contains("requests: 3, good: 3, without a reply: 0,")) << errors.toStdString();
    EXPECT_TRUE(contentOf("out.csv").contains("VQSV1,設定値,,25.8,258,\r\n"));
}

TEST_F(VorlantCtl, LastModelOfTheSettingsIsTheDefault)
{
    plugSound("KX41099999-99Z");
    expectFails("read --model KX41000000-10A", WrongModel, "KX41099999-99Z");
    model.clear();
    EXPECT_EQ(run("get VQSV1"), Done) << "no model was ever chosen: the controller says which it is";
    expectFails("get NOSUCH", Usage, "NOSUCH");
    ASSERT_TRUE(soundController::install(path("program"), path("config"),
                                         "[Setting]\nLastModelNo=1\nLastModelString=KX41099999-99Z\n"));
    EXPECT_EQ(run("read"), Done) << errors.toStdString();
    EXPECT_TRUE(output.contains("KX41099999-99Z"));
    plugSound("KX41012345-20B"); // another variant: its options are its own
    for (const char* given : {"", "KX410"}) {
        model = given;
        expectPrints("get MQCODE VQSV1", "MQCODE=KX41012345-20B\nVQSV1=25.8\n");
    }
}

TEST_F(VorlantCtl, DetectPrintsTheModelOrWhatItIsInstead)
{
    const std::tuple<QByteArray, int, std::string> rows[] = {{"KX41012345-20B", Done, "KX41012345-20B KX410\n"},
                                                             {"KX999\x02\x03\x04\x05\x06\x07\x0e\x0f\x1b", WrongModel,
                                                              "KX999\\x02\\x03\\x04\\x05\\x06\\x07\\x0e\\x0f\\x1b\n"}};
    for (const auto& [code, status, printed] : rows) {
        plugSound(code);
        EXPECT_EQ(run("detect"), status);
        EXPECT_EQ(output.toStdString(), printed);
        EXPECT_EQ(errors.isEmpty(), status == Done) << errors.toStdString();
    }
}

TEST_F(VorlantCtl, InterruptEndsTheCommandAndListsNeedNoController)
{
    for (const char* command : {"read", "detect"}) {
        plug([this](const QByteArray&) {
            kill(static_cast<pid_t>(process.processId()), SIGINT);
            return QByteArray();
        });
        expectFails(command, NoAnswer, "interrupted");
        EXPECT_EQ(controller->requests(), 1) << "nothing is sent any more";
    }
    expectPrints("models", "No  Code   Name   Screen file  Comm file\n1   KX410  KX410  M.ini        MComm.ini\n");
    setVariable("VORLANT_COM7", "/dev/bench");
    ASSERT_EQ(run("ports"), Done) << errors.toStdString();
    for (const char* text : {"COM7", "/dev/bench", "not plugged in"})
        EXPECT_TRUE(output.contains(text)) << output.toStdString();
}

TEST_F(VorlantCtl, ScanPrintsWhatAnswers)
{
    model.clear();
    plug([](const QByteArray& request) {
        const int slave = request.at(0);
        return slave == 2 || slave == 4 ? soundController::reply(request) : QByteArray();
    });
    const QString one = "scan --speeds 9600 --formats N81 --modes rtu --slaves ";
    ASSERT_EQ(run(one + "1-4"), Done) << errors.toStdString();
    const QList<QByteArray> lines = output.split('\n');
    ASSERT_EQ(lines.size(), 4) << output.toStdString();
    EXPECT_TRUE(lines[0].startsWith("Port   Device"));
    EXPECT_TRUE(lines[1].contains(controller->device().toUtf8()) && lines[1].contains("  2      KX41000000-10A  "));
    EXPECT_TRUE(lines[2].contains("  4      KX41000000-10A  "));
    ASSERT_EQ(run(one + "1-4 --first --as json"), Done);
    EXPECT_EQ(output.count("\"slave\":"), 1);
    EXPECT_TRUE(output.contains("\"slave\":\"2\",\"model\":\"KX41000000-10A\",\"ms\":\""));
    expectFails(one + "3", NoAnswer, "no controller answered");
    expectFails("--port /dev/bench " + one + "3", NoAnswer, "no such device");
}

// A port that cannot be used is skipped where all are searched.
TEST_F(VorlantCtl, ScanOfAllPortsGoesOnToTheNext)
{
    model.clear();
    plugSound();
    const QString device = controller->device();
    setVariable("VORLANT_COM1", "/dev/bench");
    setVariable("VORLANT_COM2", device);
    const auto held = std::move(controller);
    EXPECT_EQ(run("--port all scan --first --slaves 1 --speeds 9600 --formats N81 --modes rtu --as csv"), Done);
    EXPECT_TRUE(output.contains("COM2," + device.toUtf8())) << output.toStdString();
    EXPECT_TRUE(errors.contains("COM1 (/dev/bench)") && errors.contains("skipped")) << errors.toStdString();
}

TEST_F(VorlantCtl, HistoryPrintsWhatWasWrittenAndTellsWhatIsDamaged)
{
    setVariable("TZ", "UTC");
    expectPrints("history --as json", "[]\n");
    QDir().mkpath(path("state/vorlant"));
    put("state/vorlant/journal-2007-03.jsonl",
        R"({"event":"begun","id":"1","time":"2007-03-05T14:07:09.042Z","user":"op","version":"1","process":1,"started":1,)"
        R"("cause":"block","device":"/dev/bench","slave":3,"mode":"RTU","model":"KX410","parameters":[)"
        R"({"tag":"VQSV1","name":"Set, 1","old":"9","new":"\u001b10","unit":"K"}]})"
        "\nhalf\n"
        R"({"event":"completed","id":"1","time":"2007-03-05T14:07:10Z","outcome":"complete","parameters":[)"
        R"({"tag":"VQSV1","outcome":"accepted"}]})");
    ASSERT_EQ(run("history --as csv"), Done);
    EXPECT_EQ(output.toStdString(), "time,outcome,tag,name,old,new,cause,device,slave,mode,model,user,unit\r\n"
                                    "2007-03-05T14:07:09.042Z,accepted,VQSV1,\"Set, 1\",9,\\x1b10,block,/dev/bench,3,"
                                    "RTU,KX410,op,K\r\n");
    EXPECT_EQ(errors.toStdString(), "vorlantctl: history: damaged lines left out: 1\n");
}

} // namespace
