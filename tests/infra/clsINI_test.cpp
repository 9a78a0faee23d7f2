#include "clsINI.h"

#include "TestMachine.h"
#include "clsLog.h"

#include <gtest/gtest.h>

namespace {

class Ini : public ::testing::Test
{
protected:
    Ini()
    {
        log.setLogFileName("Err.log");
        box.context.errorLog = log;
        ini.setIniFileName("t.ini");
    }
    QByteArray content() const { return box.content("C:\\Vorlant\\t.ini"); }
    QString get(const QString& key, const QString& defaultText, bool readOnly = false)
    {
        return ini.GetIniData("S", key, defaultText, readOnly);
    }

    TestMachine box;
    clsLog log{box.machine};
    clsINI ini{box.context};
};

TEST_F(Ini, MissingKeyIsWrittenBackUnlessReadOnly)
{
    EXPECT_EQ(get("A", "1", true), u"1");
    EXPECT_EQ(content(), "");
    EXPECT_EQ(get("A", "1"), u"1");
    EXPECT_EQ(get("B", ""), QString());
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nB=\r\n");
    EXPECT_EQ(get("B", "x"), u"x") << "an empty value reads as the default";
    ini.PutIniData("S", "A", QVariant());
    ini.PutIniData("S", "A", QVariant(QMetaType::fromType<int>()));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nB=x\r\n");
}

TEST_F(Ini, LongValueIsCut)
{
    ini.PutIniData("S", "A", QString(600, 'x'));
    EXPECT_EQ(get("A", "").size(), 511);
    ini.setBufferSize(0);
    ini.setBufferSize(11);
    EXPECT_EQ(get("A", "").size(), 10);
}

TEST_F(Ini, NamesAndFoldersAreChecked)
{
    for (const char* refused : {"a\\b.ini", "a?.ini", ""})
        ini.setIniFileName(refused);
    get("A", "1");
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    ini.setIniPath("C:\\Vorlant\\t.ini\\\\"); // a plain file
    get("B", "2");
    ini.setIniPath("c:\\VORLANT\\Ini\\\\\\");
    get("C", "3");
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nB=2\r\n");
    EXPECT_EQ(box.content("C:\\Vorlant\\ini\\t.ini"), "[S]\r\nC=3\r\n");
    EXPECT_EQ(ini.GetWindowsPath() + ini.GetSystemPath(), u"Z:\\usr\\share\\Z:\\usr\\lib\\");
    EXPECT_EQ(ini.GetWinTempPath(), box.machine.folders.temporary() + '\\');
}

TEST_F(Ini, SectionsAreListedAndCleared)
{
    QStringList lines{"untouched"};
    EXPECT_EQ(ini.EnumSectionString("S", lines), -1);
    EXPECT_EQ(lines.size(), 1);
    for (const auto& [key, value] : {std::pair("A", "1"), {"B", ""}, {"C", "3"}})
        get(key, value);
    EXPECT_EQ(ini.EnumSectionString("s", lines), 3);
    EXPECT_EQ(lines[2], u"C=3");
    EXPECT_EQ(ini.clearSection("S"), 2);
    EXPECT_EQ(content(), "[S]\r\nA=\r\nB=\r\nC=\r\n");
}

TEST_F(Ini, FailureIsLoggedOnceAndTheDefaultStands)
{
    QDir().mkdir(box.path("C:\\Vorlant\\t.ini"));
    EXPECT_EQ(get("A", "1") + get("B", "2"), u"12");
    const QByteArray logged = box.content("C:\\Vorlant\\Err.log");
    EXPECT_EQ(logged.count(box.machine.codePage.fromText("Exception error　759->")), 1);
    EXPECT_TRUE(logged.contains("t.ini"));
}

} // namespace
