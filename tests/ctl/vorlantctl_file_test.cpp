#include "SimulatedCtlFixture.h"
#include "Table.h"

#include <sys/stat.h>

namespace {

enum Status { Done = 0, Differ = 1, WrongModel = 4, BadFile = 5 };

TEST_F(SimulatedCtl, WriteChangesExactlyTheBytesOfTheValue)
{
    plugModel(QStringLiteral("KX410"));
    const QString file = savedSet("a.kx");
    const QByteArray before = simulated->state();
    EXPECT_EQ(runWith({QStringLiteral("write"), file}), Done) << errors.toStdString();
    EXPECT_EQ(changedMemory(before), QByteArrayList()) << "the controller's own set";
    changeValue(file, "VQI1", "270");
    changeValue(file, "EV3INV", "1");
    changeValue(file, "VQPV", "9");
    EXPECT_EQ(runWith({QStringLiteral("write"), file}), Done) << errors.toStdString();
    EXPECT_EQ(changedMemory(before).join('|').toStdString(), "MEM 8102 01|MEM 8103 0E|MEM 8406 04");
    EXPECT_TRUE(errors.isEmpty() && output.isEmpty()) << errors.toStdString() << output.toStdString();
}

TEST_F(SimulatedCtl, WhatAWriteReplacedCanBeWrittenAgain)
{
    plugModel(QStringLiteral("KX410"));
    const QString file = savedSet("a.kx");
    const QByteArray before = simulated->state();
    changeValue(file, "VQI1", "270");
    ASSERT_EQ(runWith({QStringLiteral("write"), file}), Done) << errors.toStdString();
    const QDir backup(path("config/Vorlan/Backup"));
    const QStringList kept = backup.entryList(QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(runWith({QStringLiteral("write"), backup.filePath(kept.first())}), Done) << errors.toStdString();
    EXPECT_EQ(changedMemory(before), QByteArrayList());
}

TEST_F(SimulatedCtl, WithoutABackupNothingIsWritten)
{
    plugModel(QStringLiteral("KX410"));
    const QString file = savedSet("a.kx");
    changeValue(file, "VQI1", "270");
    const QByteArray before = simulated->state();
    ASSERT_TRUE(soundController::writeFile(path("config/Vorlan/Backup"), "in the way"));
    EXPECT_EQ(runWith({QStringLiteral("write"), file}), BadFile);
    expectOneLineAbout("Backup");
    EXPECT_EQ(changedMemory(before), QByteArrayList());
    EXPECT_EQ(runWith({QStringLiteral("write"), file, QStringLiteral("--no-backup")}), Done) << errors.toStdString();
    EXPECT_FALSE(changedMemory(before).isEmpty());
}

TEST_F(SimulatedCtl, CompareListsWhatDiffers)
{
    plugModel(QStringLiteral("KX410"));
    const QString same = savedSet("same.kx");
    const QString other = savedSet("other.kx");
    changeValue(other, "VQSV1", "258");
    changeValue(other, "SVSEL", "1");
    changeValue(other, "VQP1", "30.0"); // 30 in the controller: the same number
    changeValue(other, "VQPV", "9");    // measured
    const QString blank = savedSet("blank.kx");
    changeValue(blank, "VQI1", "");
    const char* table = "Tag    Name              First  Second\n"
                        "VQSV1  Set value 1       25.8   120.0\n"
                        "SVSEL  Active set value  SV2    SV1\n";
    struct
    {
        const char* name;
        QStringList words;
        int status;
        const char* printed;
    } const rows[] = {
        {"file and controller", {other}, Differ, table},
        {"two files", {other, same}, Differ, table},
        {"csv",
         {other, same, QStringLiteral("--as"), QStringLiteral("csv")},
         Differ,
         "tag,name,first,second\r\nVQSV1,Set value 1,25.8,120.0\r\nSVSEL,Active set value,SV2,SV1\r\n"},
        {"json, equal", {same, QStringLiteral("--as"), QStringLiteral("json")}, Done, "[]\n"},
        {"no value",
         {blank, QStringLiteral("--as"), QStringLiteral("json")},
         Differ,
         "[\n  {\"tag\":\"VQI1\",\"name\":\"Integral time\",\"first\":\"\",\"second\":\"120\"}\n]\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(runWith(QStringList{QStringLiteral("compare")} + row.words), row.status) << errors.toStdString();
        EXPECT_EQ(output.toStdString(), row.printed);
        EXPECT_TRUE(errors.isEmpty()) << errors.toStdString();
    }
}

TEST_F(SimulatedCtl, ShowPrintsWhatAReadPrints)
{
    plugModel(QStringLiteral("KX910"));
    const QString file = savedSet("a.kx");
    for (const char* form : {"table", "csv", "json"}) {
        ASSERT_EQ(runWith({QStringLiteral("read"), QStringLiteral("--as"), QString::fromLatin1(form)}), Done);
        const QByteArray read = output;
        EXPECT_EQ(run({QStringLiteral("show"), file, QStringLiteral("--as"), QString::fromLatin1(form)}), Done)
            << errors.toStdString();
        EXPECT_EQ(output.toStdString(), read.toStdString());
    }
    controller->unplug();
    EXPECT_EQ(run({QStringLiteral("compare"), file, file}), Done) << "two files need no controller";
}

TEST_F(SimulatedCtl, CheckDefinitionsListsWhatIsWrong)
{
    const QString screen = path("program/ini/KX620Screen.ini");
    EXPECT_EQ(run(words("check-definitions")), Done) << output.toStdString();
    EXPECT_EQ(output.toStdString(), "");
    changeText(screen, QStringLiteral("KXAddress=8002"), "KXAddress=8001");
    ASSERT_TRUE(QFile::remove(path("program/ini/KX910Comm.ini")));
    const QByteArray changed = contentOf("program/ini/KX620Screen.ini");
    const char* shared = "KX620Screen.ini [Datas10] KXAddress: VQSV2 shares memory with VQSV1; give each parameter "
                         "bytes or bits of its own\n"
                         "KX620Comm.ini [Set]: bytes of no parameter are read: 1, the first at 8003; read fewer bytes, "
                         "or describe what they hold\n";
    struct
    {
        const char* words;
        int status;
        std::string printed;
    } const rows[] = {
        {"check-definitions KX410", Done, ""},
        {"check-definitions", BadFile,
         std::string(shared) + "KX910Comm.ini: is missing; put it into the definition folder\n"},
        {"check-definitions KX410 KX620 KX62011110-10A", BadFile, shared},
        {"check-definitions KX910 --as json", BadFile,
         "[\n  {\"file\":\"KX910Comm.ini\",\"section\":\"\",\"key\":\"\",\"fault\":\"is missing\","
         "\"remedy\":\"put it into the definition folder\"}\n]\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(run(words(row.words)), row.status) << row.words;
        EXPECT_EQ(output.toStdString(), row.printed) << row.words;
        EXPECT_TRUE(errors.isEmpty()) << errors.toStdString();
    }
    EXPECT_EQ(contentOf("program/ini/KX620Screen.ini"), changed);
    EXPECT_EQ(run(words("check-definitions KX410 KX999")), 2);
    expectOneLineAbout("\"KX999\"");
}

// FILES that are none, or not of this controller. Nothing reaches the controller.

TEST_F(SimulatedCtl, BadFileWritesNothing)
{
    plugModel(QStringLiteral("KX410"));
    QFile saved(savedSet("a.kx"));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    const QByteArray sound = saved.readAll();
    const QByteArray before = simulated->state();
    for (const QStringList& row : tableRows("ctl/bad_sets.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        const QByteArray text = row[2].toUtf8();
        ASSERT_TRUE(row[1] == u"content" || sound.contains(text));
        const QByteArray content = row[1] == u"content"   ? text
                                   : row[1] == u"replace" ? QByteArray(sound).replace(text, row[3].toUtf8())
                                                          : sound.left(sound.indexOf(text));
        ASSERT_TRUE(soundController::writeFile(path("bad.kx"), content));
        const std::pair<QString, QString> runs[] = {
            {QStringLiteral("show"), row[4]}, {QStringLiteral("write"), row[5]}, {QStringLiteral("compare"), row[6]}};
        for (const auto& [command, status] : runs) {
            SCOPED_TRACE(qPrintable(command));
            // Without --model: the file's own.
            const int ended = run({QStringLiteral("--port"), controller->device(), command, path("bad.kx")});
            EXPECT_EQ(ended, status.toInt()) << errors.toStdString();
            if (status.toInt() > Differ)
                expectOneLineAbout(qPrintable(row[7]));
        }
    }
    EXPECT_EQ(simulated->state(), before);
}

TEST_F(SimulatedCtl, FileThatIsNoFile)
{
    plugModel(QStringLiteral("KX410"));
    const QString sound = savedSet("a.kx");
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    ASSERT_EQ(mkfifo(qPrintable(path("pipe")), 0600), 0);
    ASSERT_TRUE(QFile::copy(sound, path("secret.kx")) && QFile::copy(sound, path("a:b.kx")));
    ASSERT_TRUE(becomePlainUser());
    ASSERT_EQ(chmod(qPrintable(path("secret.kx")), 0), 0);
    struct
    {
        QString file;
        const char* message;
    } const rows[] = {{path("none.kx"), "there is no such file"},
                      {path("folder"), "no plain file"},
                      {path("pipe"), "no plain file"},
                      {QStringLiteral("/dev/null"), "no plain file"},
                      {path("a:b.kx"), "choose another name"},
                      {path("secret.kx"), "may not be read by you"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.file));
        for (const char* command : {"show", "write", "compare"}) {
            EXPECT_EQ(runWith({QString::fromLatin1(command), row.file}), BadFile);
            expectOneLineAbout(row.message);
        }
        EXPECT_EQ(runWith({QStringLiteral("compare"), sound, row.file}), BadFile);
        expectOneLineAbout(row.message);
    }
}

TEST_F(SimulatedCtl, FileOfAnotherModelThanTheOption)
{
    plugModel(QStringLiteral("KX413"));
    const QString of413 = savedSet("413.kx");
    plugModel(QStringLiteral("KX410"));
    const QString of410 = savedSet("410.kx");
    for (const QStringList& words : {QStringList{QStringLiteral("show"), of413},
                                     {QStringLiteral("write"), of413},
                                     {QStringLiteral("compare"), of413},
                                     {QStringLiteral("compare"), of410, of413}}) {
        EXPECT_EQ(runWith(words), WrongModel) << qPrintable(words.join(u' '));
        expectOneLineAbout("KX41300000-10A, not KX410");
    }
    // And the controller that is another one than the file's.
    EXPECT_EQ(run({QStringLiteral("--port"), controller->device(), QStringLiteral("write"), of413}), WrongModel);
    expectOneLineAbout("the controller is KX41000000-10A, not KX41300000-10A");
}

TEST_F(SimulatedCtl, SetThatCannotBeSaved)
{
    plugModel(QStringLiteral("KX410"));
    for (const QString& target : {path("program"), path("a:b.kx"), path("no/such/a.kx"), QStringLiteral("/dev/full")}) {
        EXPECT_EQ(runWith({QStringLiteral("read"), QStringLiteral("--as"), QStringLiteral("set"), QStringLiteral("-o"),
                           target}),
                  BadFile);
        expectOneLineAbout(qPrintable(target));
    }
}

} // namespace
