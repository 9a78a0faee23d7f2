#include "VorlantCtlFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <csignal>

namespace {

TEST_F(VorlantCtl, ReadPrintsTheControllersValues)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    ASSERT_EQ(readWith(words("--as json")), 0) << errors.toStdString();
    EXPECT_TRUE(errors.isEmpty()) << "no progress when nobody watches";
    const QJsonArray items = QJsonDocument::fromJson(output).array();
    ASSERT_EQ(items.size(), 3);
    const auto text = [&](int i, const char* key) {
        return items[i].toObject()[QLatin1String(key)].toString().toStdString();
    };
    EXPECT_EQ(text(0, "value"), soundController::kModel.toStdString());
    EXPECT_EQ(text(1, "tag"), "VQSV1");
    EXPECT_EQ(text(1, "name"), "設定値");
    EXPECT_EQ(text(1, "value"), "25.8");
    EXPECT_EQ(text(1, "data"), "258");
    EXPECT_EQ(text(2, "value"), "42");
}

TEST_F(VorlantCtl, ReadWritesTheFileWhole)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    ASSERT_EQ(readWith({QStringLiteral("-o"), path("out.csv"), QStringLiteral("--as"), QStringLiteral("csv")}), 0);
    EXPECT_TRUE(output.isEmpty());
    QFile file(path("out.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("VQSV1,設定値,,25.8,258\r\n"));
}

TEST_F(VorlantCtl, OptionsDoNotReachTheSettings)
{
    plug([](const QByteArray& request) { return soundController::reply(request.left(8)); });
    ASSERT_EQ(readWith(words("--speed 19200")), 0) << errors.toStdString();
    QFile settings(path("config") + QStringLiteral("/Vorlan/Vorlant.ini"));
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QByteArray text = settings.readAll();
    EXPECT_TRUE(text.contains("CommSpeed=9600")) << text.toStdString();
    EXPECT_FALSE(text.contains(controller->device().toUtf8()));
}

TEST_F(VorlantCtl, DetectPrintsTheModelOrWhatItIsInstead)
{
    const struct
    {
        const char* model;
        int status;
        const char* printed;
    } rows[] = {{"KX41012345-20B", 0, "KX41012345-20B KX410\n"},
                {"KX99900000-10A", 4, "KX99900000-10A\n"},
                {"KX\x01\x02\x03\x04\x05\x06\x07\x0e\x0f\x10\x11\x1b", 4,
                 "KX\\x01\\x02\\x03\\x04\\x05\\x06\\x07\\x0e\\x0f\\x10\\x11\\x1b\n"}};
    for (const auto& row : rows) {
        plug([&row](const QByteArray& request) { return soundController::reply(request, row.model); });
        EXPECT_EQ(run({QStringLiteral("--port"), controller->device(), QStringLiteral("detect")}), row.status);
        EXPECT_EQ(output.toStdString(), row.printed);
        EXPECT_EQ(errors.isEmpty(), row.status == 0) << errors.toStdString();
    }
    EXPECT_EQ(run({QStringLiteral("--port"), path("no-adapter"), QStringLiteral("detect")}), 3);
    expectOneLineAbout("no-adapter");
}

TEST_F(VorlantCtl, OtherModel)
{
    plug([](const QByteArray& request) { return soundController::reply(request, "KX41312000-20B"); });
    EXPECT_EQ(readWith(), 4);
    expectOneLineAbout("KX41312000-20B");
}

TEST_F(VorlantCtl, InterruptEndsARead)
{
    plug([this](const QByteArray&) {
        kill(static_cast<pid_t>(process.processId()), SIGINT);
        return QByteArray();
    });
    EXPECT_EQ(readWith(), 3);
    expectOneLineAbout("interrupted");
}

TEST_F(VorlantCtl, ModelsListsTheCatalogue)
{
    ASSERT_EQ(run(words("models")), 0);
    EXPECT_EQ(output.toStdString(),
              "No  Code   Name   Screen file  Comm file\n1   KX410  KX410  M.ini        MComm.ini\n");
}

TEST_F(VorlantCtl, UsageIsStatusTwo)
{
    EXPECT_EQ(run(words("explode")), 2);
    expectOneLineAbout("\"explode\"");
    EXPECT_EQ(run(words("read")), 2) << "no model was ever chosen";
    expectOneLineAbout("--model");
    EXPECT_EQ(run(words("--model ZZ999 read")), 2);
    expectOneLineAbout("\"ZZ999\"");
}

TEST_F(VorlantCtl, PortsShowsWhatAComNameStandsFor)
{
    QProcessEnvironment environment = process.processEnvironment();
    environment.insert(QStringLiteral("VORLANT_COM7"), QStringLiteral("/dev/bench"));
    process.setProcessEnvironment(environment);
    ASSERT_EQ(run({QStringLiteral("ports")}), 0) << errors.toStdString();
    EXPECT_TRUE(output.contains("COM7")) << output.toStdString();
    EXPECT_TRUE(output.contains("/dev/bench"));
}

TEST_F(VorlantCtl, LastModelOfTheSettingsIsTheDefault)
{
    ASSERT_TRUE(soundController::install(path("program"), path("config"),
                                         "[Setting]\nLastModelNo=1\nLastModelString=KX41099999-99Z\n"));
    plug([](const QByteArray& request) { return soundController::reply(request, "KX41099999-99Z"); });
    EXPECT_EQ(run({QStringLiteral("--port"), controller->device(), QStringLiteral("read")}), 0) << errors.toStdString();
    EXPECT_TRUE(output.contains("KX41099999-99Z"));
}

} // namespace
