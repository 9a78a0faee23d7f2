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
        log.setLogFileName(QStringLiteral("Err.log"));
        box.context.errorLog = log;
        ini.setIniFileName(QStringLiteral("t.ini"));
    }
    QByteArray content() const { return box.content(QStringLiteral("C:\\Vorlant\\t.ini")); }
    QString get(const char* key, const char* defaultText, bool readOnly = false)
    {
        return ini.GetIniData(QStringLiteral("S"), QLatin1String(key), QLatin1String(defaultText), readOnly);
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
    ini.PutIniData(QStringLiteral("S"), QStringLiteral("A"), QVariant());
    ini.PutIniData(QStringLiteral("S"), QStringLiteral("A"), QVariant(QMetaType::fromType<int>()));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nB=x\r\n");
}

TEST_F(Ini, LongValueIsCut)
{
    ini.PutIniData(QStringLiteral("S"), QStringLiteral("A"), QString(600, u'x'));
    EXPECT_EQ(get("A", "").size(), 511);
    ini.setBufferSize(0);
    ini.setBufferSize(11);
    EXPECT_EQ(get("A", "").size(), 10);
}

TEST_F(Ini, NamesAndFoldersAreChecked)
{
    ini.setIniFileName(QStringLiteral("a\\b.ini"));
    ini.setIniFileName(QStringLiteral("a?.ini"));
    ini.setIniFileName(QString());
    get("A", "1");
    EXPECT_NE(content(), "");
    ini.setIniPath(QStringLiteral("C:\\Vorlant\\t.ini\\\\")); // a plain file
    get("B", "2");
    ini.setIniPath(QStringLiteral("c:\\VORLANT\\Ini\\\\\\"));
    get("C", "3");
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nB=2\r\n");
    EXPECT_EQ(box.content(QStringLiteral("C:\\Vorlant\\ini\\t.ini")), "[S]\r\nC=3\r\n");
}

TEST_F(Ini, FoldersOfTheMachineEndInABackslash)
{
    EXPECT_EQ(ini.GetWindowsPath(), u"Z:\\usr\\share\\");
    EXPECT_EQ(ini.GetSystemPath(), u"Z:\\usr\\lib\\");
    EXPECT_EQ(ini.GetWinTempPath(), box.machine.folders.temporary() + u'\\');
}

TEST_F(Ini, SectionsAreListedAndCleared)
{
    QStringList lines{QStringLiteral("untouched")};
    EXPECT_EQ(ini.EnumSectionString(QStringLiteral("S"), lines), -1);
    EXPECT_EQ(lines.size(), 1);
    get("A", "1");
    get("B", "");
    get("C", "3");
    EXPECT_EQ(ini.EnumSectionString(QStringLiteral("s"), lines), 3);
    EXPECT_EQ(lines[2], u"C=3");
    EXPECT_EQ(ini.clearSection(QStringLiteral("S")), 2);
    EXPECT_EQ(content(), "[S]\r\nA=\r\nB=\r\nC=\r\n");
}

TEST_F(Ini, FailureIsLoggedOnceAndTheDefaultStands)
{
    QDir().mkdir(box.path(QStringLiteral("C:\\Vorlant\\t.ini")));
    EXPECT_EQ(get("A", "1"), u"1");
    EXPECT_EQ(get("B", "2"), u"2");
    const QByteArray logged = box.content(QStringLiteral("C:\\Vorlant\\Err.log"));
    EXPECT_EQ(logged.count(box.machine.codePage.fromText(QStringLiteral("Exception error　759->"))), 1);
    EXPECT_TRUE(logged.contains("t.ini"));
}

} // namespace
