#include "clsINI.h"

#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

class Ini : public ::testing::Test
{
protected:
    Ini()
    {
        log.setLogFileName(QStringLiteral("Err.log"));
        box.context.errorLog = &log;
        ini.setIniFileName(QStringLiteral("t.ini"));
    }
    QString file() { return box.path(QStringLiteral("C:\\Vorlant")) + QStringLiteral("/t.ini"); }
    QByteArray content(const QString& path)
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("<none>");
    }
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
    EXPECT_EQ(content(file()), "<none>");
    EXPECT_EQ(get("A", "1"), u"1");
    EXPECT_EQ(get("B", ""), QString());
    EXPECT_EQ(content(file()), "[S]\r\nA=1\r\nB=\r\n");
    EXPECT_EQ(get("B", "x"), u"x") << "an empty value reads as the default";
    EXPECT_EQ(content(file()), "[S]\r\nA=1\r\nB=x\r\n");
}

TEST_F(Ini, ValuesHaveTextForms)
{
    const QString s = QStringLiteral("S");
    ini.PutIniData(s, QStringLiteral("bool"), true);
    ini.PutIniData(s, QStringLiteral("long"), -5);
    ini.PutIniData(s, QStringLiteral("single"), 0.1F);
    ini.PutIniData(s, QStringLiteral("none"), QVariant());
    EXPECT_EQ(content(file()), "[S]\r\nbool=True\r\nlong=-5\r\nsingle=0.1\r\n");
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
    EXPECT_NE(content(file()), "<none>");
    ini.setIniPath(QStringLiteral("C:\\Vorlant\\t.ini\\\\")); // a plain file
    get("B", "2");
    ini.setIniPath(QStringLiteral("c:\\VORLANT\\Ini\\\\\\"));
    get("C", "3");
    EXPECT_EQ(content(file()), "[S]\r\nA=1\r\nB=2\r\n");
    EXPECT_EQ(content(box.path(QStringLiteral("C:\\Vorlant\\ini")) + QStringLiteral("/t.ini")), "[S]\r\nC=3\r\n");
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
    EXPECT_EQ(content(file()), "[S]\r\nA=\r\nB=\r\nC=\r\n");
}

TEST_F(Ini, FailureIsLoggedOnceAndTheDefaultStands)
{
    QDir().mkdir(file());
    EXPECT_EQ(get("A", "1"), u"1");
    EXPECT_EQ(get("B", "2"), u"2");
    const QByteArray logged = content(box.path(QStringLiteral("C:\\Vorlant\\Err.log")));
    EXPECT_EQ(logged.count(box.machine.codePage.fromText(QStringLiteral("Exception error　556->"))), 1);
    EXPECT_TRUE(logged.contains("t.ini"));
}

TEST_F(Ini, SettingsFillThemselves)
{
    clsLibrary library(box.context);
    clsCfg settings;
    settings.init(&library);
    settings.load();
    const QString path = box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini"));
    EXPECT_EQ(content(path).count('='), 15);
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("ShowSendConfForm"), QStringLiteral("yes"));
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("UseCommunicate"), 1);
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("ForceFontCharSet"), QStringLiteral("abc"));
    settings.load();
    EXPECT_FALSE(settings.m_bViewSendConf);
    EXPECT_TRUE(settings.m_bComm);
    EXPECT_EQ(settings.m_lCharSet, 0);
    settings.save();
    EXPECT_TRUE(content(path).contains("UseCommunicate=True"));
}

TEST_F(Ini, LibraryHelpers)
{
    const clsLibrary library(box.context);
    EXPECT_FALSE(library.toBoolean(QStringLiteral(" True"), true));
    EXPECT_FALSE(library.toBoolean(QStringLiteral("-1"), true));
    EXPECT_EQ(library.toLong(QStringLiteral("3.5"), 0), 4);
    EXPECT_EQ(library.toLong(QStringLiteral("abc"), 7), 7);
    EXPECT_TRUE(library.MakeDir(QStringLiteral("C:\\a\\b\\c")));
    EXPECT_TRUE(library.DirExists(QStringLiteral("c:\\A\\B\\C")));
    EXPECT_FALSE(library.MakeDir(QStringLiteral("C:\\a\\\\b")));
    EXPECT_FALSE(library.MakeDir(QStringLiteral("Q:\\a\\b")));
    EXPECT_EQ(library.GetCommand(QStringLiteral("/Lfile.txt /X"), QStringLiteral("/L"), true), u"file.txt ");
    EXPECT_EQ(library.HexString(QByteArray::fromHex("01abff")), u"01ABFF");
    EXPECT_EQ(library.getAdrString(7), u"07");
    EXPECT_EQ(library.GetFileTitleEx(QStringLiteral("C:\\x\\archive.tar.gz")), u"archive.tar");
    for (const char16_t* path : {u"\\a", u"C:\\a:b", u"C:/a", u"", u":x"})
        EXPECT_FALSE(library.PathName_Check(QString::fromUtf16(path)));
    EXPECT_TRUE(library.PathName_Check(QStringLiteral("\\\\host")));
    EXPECT_FALSE(library.FileName_Check(QStringLiteral("xFcCounterx"), 1));
    EXPECT_TRUE(library.FileName_Check(QStringLiteral("xFcCounterx"), 0));
    EXPECT_EQ(library.StrToColor(QStringLiteral(" vbRed "), 1), 255);
    EXPECT_EQ(library.StrToColor(QStringLiteral("RGB.0.128.255"), 1), 0xFF8000);
    EXPECT_EQ(library.StrToColor(QStringLiteral("RGB.1"), 1), 1);
    EXPECT_EQ(library.StrToColor(QStringLiteral("VBRED"), 1), 0);
    EXPECT_EQ(library.StrToColor(QStringLiteral("vbHighlight"), 1),
              library.ToCOLOEREF(static_cast<qint32>(0x8000000D)));
}

} // namespace
