// The commands with files: show, write, compare, check-definitions.
#include "SimulatedCtlFixture.h"
#include "Table.h"

#include <sys/stat.h>

namespace {

TEST_F(SimulatedCtl, WriteChangesExactlyTheBytesOfTheValueAndCanBeUndone)
{
    plugModel("KX410");
    save("a.kx");
    expectFails("write a.kx --no-backup", Done, "nothing to write: the controller holds these values");
    EXPECT_EQ(changedMemory(), "") << "the controller's own set";
    changeValue("a.kx", "VQI1", "270");
    changeValue("a.kx", "EV3INV", "1");
    changeValue("a.kx", "VQPV", "9");
    put("config/Vorlan/Backup", "in the way");
    EXPECT_EQ(printedRows("write a.kx", BadFile, "tag outcome"), "VQI1=not sent|EV3INV=not sent");
    EXPECT_TRUE(errors.contains("cannot be kept") && errors.contains("Backup")) << errors.toStdString();
    EXPECT_EQ(changedMemory(), "") << "nothing without a backup";
    ASSERT_TRUE(QFile::remove(path("config/Vorlan/Backup")));
    EXPECT_EQ(printedRows("write a.kx", Done, "tag cause held new outcome kept"),
              "VQI1=loaded=120=270=accepted=270|EV3INV=loaded=Energized=De-energized=accepted=De-energized");
    EXPECT_EQ(changedMemory(), "MEM 8102 01|MEM 8103 0E|MEM 8406 04");
    const QDir backup(path("config/Vorlan/Backup"));
    ASSERT_EQ(backup.entryList(QDir::Files).size(), 1);
    const QString file = backup.filePath(backup.entryList(QDir::Files).first());
    EXPECT_EQ(run("write|" + file), Done) << errors.toStdString();
    EXPECT_EQ(changedMemory(), "");
    ASSERT_TRUE(run("backups KX410 --as csv") == Done && errors.isEmpty()) << errors.toStdString();
    EXPECT_TRUE(output.count('\n') == 3 && output.endsWith((',' + file + "\r\n").toUtf8())) << output.toStdString();
    ASSERT_TRUE(QFile::resize(file, 0));
    EXPECT_EQ(run("backups KX62012345-20B --as json"), Done);
    EXPECT_TRUE(output == "[]\n" && errors.contains("cannot be read as backups: 1")) << errors.toStdString();
}

// A setting in memory and one in a register, a calibration, a setting of the line and a command.
TEST_F(SimulatedCtl, OnlyTheClassesThatWereChosenAreSent)
{
    plugModel("KX410");
    save("a.kx");
    const std::pair<const char*, const char*> changes[] = {
        {"VQI1", "240"}, {"VQMAN", "125"}, {"VQBIA", "5"}, {"COMDLY", "20"}, {"RUNSTP", "0"}};
    for (const auto& [tag, value] : changes)
        changeValue("a.kx", tag, value);
    for (const QStringList& row : tableRows("ctl/chosen_classes.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        plugModel("KX410");
        EXPECT_EQ(printedRows(row[0], row[1].toInt(), "tag outcome kept").toStdString(), row[2].toStdString());
        EXPECT_EQ(changedMemory(), row[3].toStdString());
        EXPECT_EQ(errors.isEmpty() ? "-" : errors.trimmed().toStdString(), row[4].toStdString());
    }
    plugModel("KX410");
    EXPECT_TRUE(
        printedRows("write a.kx", Done, "tag reason").contains("VQBIA=class calibration: not chosen, see --class"));
}

TEST_F(SimulatedCtl, CompareListsWhatDiffers)
{
    plugModel("KX410");
    for (const char* file : {"same.kx", "other.kx", "blank.kx"})
        save(file);
    changeValue("other.kx", "VQSV1", "258");
    changeValue("other.kx", "SVSEL", "1");
    changeValue("other.kx", "VQP1", "30.0"); // 30 in the controller: the same number
    changeValue("other.kx", "VQPV", "9");    // measured
    changeValue("blank.kx", "VQI1", "");
    expectPrints("compare other.kx",
                 "Tag    Name                 File     Controller\n"
                 "VQSV1  Set value 1          25.8 °C  120.0 °C\n"
                 "SVSEL  Set value selection  SV2      SV1\n",
                 Differ);
    expectPrints("compare other.kx same.kx",
                 "Tag    Name                 other.kx  same.kx\n"
                 "VQSV1  Set value 1          25.8 °C   120.0 °C\n"
                 "SVSEL  Set value selection  SV2       SV1\n",
                 Differ);
    expectPrints("compare other.kx same.kx --as csv",
                 "tag,name,first,second,unit\r\nVQSV1,Set value 1,25.8,120.0,°C\r\n"
                 "SVSEL,Set value selection,SV2,SV1,\r\n",
                 Differ);
    expectPrints("compare same.kx --as json", "[]\n");
    expectPrints("compare same.kx same.kx", "");
    expectPrints("compare blank.kx --as json",
                 "[\n  {\"tag\":\"VQI1\",\"name\":\"Integral time\",\"file\":\"\",\"controller\":\"120\","
                 "\"unit\":\"s\"}\n]\n",
                 Differ);
}

TEST_F(SimulatedCtl, ShowPrintsWhatAReadPrints)
{
    plugModel("KX910");
    save("a.kx");
    for (const QString form : {" --as table", " --as csv", " --as json"}) {
        ASSERT_EQ(run("read" + form), Done);
        expectPrints("show a.kx" + form, output.toStdString());
    }
}

TEST_F(SimulatedCtl, CheckDefinitionsListsWhatIsWrong)
{
    expectPrints("check-definitions", "");
    changeText("program/ini/KX620Screen.ini", "KXAddress=8002", "KXAddress=8001");
    ASSERT_TRUE(QFile::remove(path("program/ini/KX910Comm.ini")));
    const QByteArray changed = contentOf("program/ini/KX620Screen.ini");
    const std::string shared = "KX620Screen.ini [Datas10] KXAddress: VQSV2 shares memory with VQSV1; give each "
                               "parameter bytes or bits of its own\n"
                               "KX620Comm.ini [Set]: bytes of no parameter are read: 1, the first at 8003; read fewer "
                               "bytes, or describe what they hold\n";
    expectPrints("check-definitions KX410", "");
    expectPrints("check-definitions KX410 KX620 KX62011110-10A", shared, BadFile);
    expectPrints("check-definitions", shared + "KX910Comm.ini: is missing; put it into the definition folder\n",
                 BadFile);
    expectPrints("check-definitions KX910 --as json",
                 "[\n  {\"file\":\"KX910Comm.ini\",\"section\":\"\",\"key\":\"\",\"fault\":\"is missing\","
                 "\"remedy\":\"put it into the definition folder\"}\n]\n",
                 BadFile);
    EXPECT_EQ(contentOf("program/ini/KX620Screen.ini"), changed) << "a check changes nothing";
}

// FILES that are none, or not of this controller. Nothing reaches the controller.

TEST_F(SimulatedCtl, BadFileWritesNothing)
{
    plugModel("KX410");
    save("a.kx");
    const QByteArray sound = contentOf("a.kx");
    model.clear(); // the file's own
    for (const QStringList& row : tableRows("ctl/bad_sets.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        const QByteArray text = row[2].toUtf8();
        ASSERT_TRUE(row[1] == u"content" || sound.contains(text));
        put("bad.kx", row[1] == u"content"   ? text
                      : row[1] == u"replace" ? QByteArray(sound).replace(text, row[3].toUtf8())
                                             : sound.left(sound.indexOf(text)));
        int column = 4;
        for (const char* line : {"show bad.kx", "write bad.kx", "compare bad.kx"}) {
            const int status = row[column++].toInt();
            if (status > Differ)
                expectFails(line, status, row[7]);
            else
                EXPECT_EQ(run(line), status) << line << errors.toStdString();
        }
    }
    EXPECT_EQ(changedMemory(), "");
}

TEST_F(SimulatedCtl, FileThatIsNoSetOfThisModel)
{
    plugModel("KX413");
    save("413.kx");
    plugModel("KX410");
    save("410.kx");
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    ASSERT_EQ(mkfifo(qPrintable(path("pipe")), 0600), 0);
    ASSERT_TRUE(QFile::copy(path("410.kx"), path("secret.kx")) && QFile::copy(path("410.kx"), path("a:b.kx")));
    becomePlainUser();
    ASSERT_EQ(chmod(qPrintable(path("secret.kx")), 0), 0);
    const std::tuple<QString, int, QString> rows[] = {
        {"none.kx", BadFile, "there is no such file"}, {"folder", BadFile, "not a plain file"},
        {"pipe", BadFile, "not a plain file"},         {"a:b.kx", BadFile, "choose another name"},
        {"secret.kx", BadFile, "permission denied"},   {"413.kx", WrongModel, "KX41300000-10A, not KX410"}};
    for (const auto& [file, status, message] : rows) {
        for (const char* command : {"show ", "write ", "compare ", "compare 410.kx "})
            expectFails(command + file, status, message);
    }
    model.clear();
    expectFails("write 413.kx", WrongModel, "the controller is KX41000000-10A, not KX41300000-10A");
}

} // namespace
