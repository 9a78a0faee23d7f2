#include "ProgramContext.h"
#include "Table.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

class Library : public ::testing::Test
{
protected:
    Library() : library(box.context) {}

    TestMachine box;
    clsLibrary library;
};

TEST_F(Library, ConversionsFallBack)
{
    for (const QStringList& row : tableRows("infra/conversions.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        EXPECT_EQ(library.toBoolean(row[0], true), row[1] == u"true");
        EXPECT_EQ(library.toLong(row[0], 77), row[2].toInt());
        EXPECT_EQ(library.toInteger(row[0], 77), row[3].toInt());
        EXPECT_EQ(library.toCheckVal(row[0], 77), row[4].toInt());
    }
    const struct
    {
        QVariant value;
        bool boolean;
        int number;
        int small;
        double real;
    } rows[] = {{1, true, 1, 1, 1},
                {0, false, 0, 0, 0},
                {1.0, true, 1, 1, 1},
                {true, true, -1, -1, -1},
                {-32769.0, false, -32769, 77, -32769},
                {2147483647.5, false, 77, 77, 2147483647.5},
                {QVariant(), false, 77, 77, 77}};
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.value.toString()));
        EXPECT_EQ(library.toBoolean(row.value, true), row.boolean);
        EXPECT_EQ(library.toLong(row.value, 77), row.number);
        EXPECT_EQ(library.toInteger(row.value, 77), row.small);
        EXPECT_EQ(library.toDouble(row.value, 77), row.real);
    }
    EXPECT_EQ(library.toCheckVal(true, 77), 1);
    EXPECT_EQ(library.toCheckVal(1.5, 77), 0);
    EXPECT_EQ(library.toSingle(QStringLiteral("1e39"), 7.0F), 7.0F);
    EXPECT_EQ(library.toSingle(0.1, 7.0F), 0.1F);
    EXPECT_EQ(library.toDouble(QStringLiteral("1e39"), 7.0), 1e39);
    EXPECT_EQ(library.toModalVal(true) + library.toModalVal(false), 1);
}

TEST_F(Library, NamesAndPathsAreChecked)
{
    for (const char* both : {"", "a/b", "\\data", "\\\\", "C:\\a:b", "9:\\a", "a?b"}) {
        EXPECT_FALSE(library.FileName_Check(QLatin1String(both), 0)) << both;
        EXPECT_FALSE(library.PathName_Check(QLatin1String(both))) << both;
    }
    for (const char* path : {"a b", "data.k41", "\\\\server\\s"}) {
        EXPECT_EQ(library.FileName_Check(QLatin1String(path), 0), QByteArray(path) == "data.k41") << path;
        EXPECT_TRUE(library.PathName_Check(QLatin1String(path))) << path;
    }
    EXPECT_TRUE(library.FileName_Check(QStringLiteral("fcCounter"), 0));
    EXPECT_FALSE(library.FileName_Check(QStringLiteral("fcCounter"), 1));
    EXPECT_TRUE(library.FileNameWithLen_Check(QStringLiteral("設定.txt"), 0, 8)) << "two double-byte characters";
    EXPECT_FALSE(library.FileNameWithLen_Check(QStringLiteral("設定.txt"), 0, 7));
    EXPECT_FALSE(library.PathName_Check(QStringLiteral("C:\\") + QString(248, u'a')));
}

TEST_F(Library, FoldersAreMadeLevelByLevel)
{
    EXPECT_TRUE(library.MakeDir(QStringLiteral("C:\\a\\b\\c\\")));
    EXPECT_TRUE(library.DirExists(QStringLiteral("C:\\A\\B\\C")));
    EXPECT_TRUE(library.MakeDir(QStringLiteral("below")));
    EXPECT_TRUE(library.DirExists(QStringLiteral("C:\\Vorlant\\below")));
    for (const char* refused : {"C:\\a\\\\b", "C:\\", "Q:\\a\\b", "C:\\a?b"})
        EXPECT_FALSE(library.MakeDir(QLatin1String(refused))) << refused;
    QFile plain(box.path(QStringLiteral("C:\\file")));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    EXPECT_FALSE(library.MakeDir(QStringLiteral("C:\\file\\b")));
    EXPECT_TRUE(library.FileExists(QStringLiteral("C:\\FILE")));
    EXPECT_FALSE(library.FileExists(QStringLiteral("C:\\a")));
}

TEST_F(Library, TextsAndSwitchesAreSplit)
{
    EXPECT_EQ(library.getDataToken(QStringLiteral("a=b=c"), QStringLiteral("=")), u"b=c");
    EXPECT_EQ(library.getKeyToken(QStringLiteral("a=b=c"), QStringLiteral("=")), u"a");
    EXPECT_EQ(library.getKeyToken(QStringLiteral("="), QStringLiteral("=")), u"=") << "shorter than two characters";
    EXPECT_EQ(library.GetCommand(QStringLiteral("/Lfile.txt /X"), QStringLiteral("/l"), false), u"FILE.TXT ");
    EXPECT_EQ(library.GetCommand(QStringLiteral("/Lfile.txt /X"), QStringLiteral("/L"), true), u"file.txt ");
    EXPECT_EQ(library.HexString(QByteArray("\x01\xAB\xFF", 3)), u"01ABFF");
    EXPECT_EQ(library.getAdrString(7), u"07");
    EXPECT_EQ(library.getAdrString(-7), u"-7");
}

TEST_F(Library, ColoursAreReadAndNamed)
{
    struct
    {
        const char* text;
        qint32 color; // default 42
    } const rows[] = {{" vbRed ", 255},  {"VBRED", 0},  {"vbNothing", 42}, {"RGB.0.128.255", 0xFF8000},
                      {"RGB.1.2.x", 42}, {"&hFF", 255}, {"Red", 0},        {"99999999999", 42}};
    for (const auto& row : rows)
        EXPECT_EQ(library.StrToColor(QLatin1String(row.text), 42), row.color) << row.text;
    EXPECT_EQ(library.StrToColor(QStringLiteral("vbHighlight"), 0), static_cast<qint32>(box.colors.color(13)));
    EXPECT_EQ(library.ToCOLOEREF(static_cast<qint32>(0x800000FFU)), 0) << "no such system colour";
    EXPECT_EQ(library.ColorToStr(0x8080FF), u"vbLightRed");
    EXPECT_EQ(library.ColorToStr(0x123456), u"&h123456");
    EXPECT_EQ(library.ColorToStr(static_cast<qint32>(0x8000000DU)), u"&h8000000D");
    QString name;
    QString comment;
    library.getColorTable(9, name, comment);
    EXPECT_EQ(name + u'/' + comment, u"vbLightYellow/LghtYellow");
    library.getColorTable(library.getColorTableUbound(), name, comment);
    EXPECT_EQ(name + comment, QString()) << "it ends with an empty slot";
}

TEST_F(Library, SettingsFillTheFileAndComeBack)
{
    const QString file = QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini");
    clsCfg settings;
    settings.init(&library);
    settings.load();
    EXPECT_TRUE(box.content(file).contains("ForceFont=System\r\nForceFontSize=9"));
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("ShowSendConfForm"), QStringLiteral("yes"));
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("UseCommunicate"), QStringLiteral("1"));
    library.saveINIParam(QStringLiteral("Setting"), QStringLiteral("ForceFontCharSet"), QStringLiteral("abc"));
    settings.load();
    EXPECT_FALSE(settings.m_bViewSendConf);
    EXPECT_TRUE(settings.m_bComm);
    EXPECT_EQ(settings.m_lCharSet, 0);
    settings.m_sFont = QStringLiteral("ゴシック");
    EXPECT_TRUE(settings.save().ok());
    settings.m_sFont.clear();
    settings.load();
    EXPECT_EQ(settings.m_sFont, u"ゴシック");
    EXPECT_TRUE(box.content(file).contains("UseCommunicate=True"));
}

TEST(UserLocale, FollowsTheLanguage)
{
    for (const QStringList& row : tableRows("infra/locales.tsv")) {
        const platform::UserLocale locale{QLocale(row[0])};
        EXPECT_EQ(locale.languageCode(), row[1]) << qPrintable(row[0]);
        EXPECT_TRUE(row[2] == u"-" || locale.shortDate() == row[2]) << qPrintable(row[0]);
    }
}

TEST_F(Library, FilesHaveTheirPlaces)
{
    EXPECT_EQ(library.getIniFilePath(QString()), u"C:\\Vorlant\\ini");
    EXPECT_EQ(library.getIniFilePath(QStringLiteral("Lang")), library.getIniFilePath(QStringLiteral("Main")));
    EXPECT_EQ(library.getIniFilePath(QStringLiteral("Main")), u"C:\\Users\\AppData\\Vorlan");
    EXPECT_EQ(library.getIniFileName(QStringLiteral("Any")), u"Vorlant.ini");
    EXPECT_EQ(library.CheckDriveType(QStringLiteral("C:\\")), 3);
    EXPECT_EQ(library.CheckDriveType(QStringLiteral("Q:\\")), 1);
    double total = 0;
    double available = -1;
    EXPECT_TRUE(library.GetDiskFreeSP(QStringLiteral("C:\\"), total, available));
    EXPECT_GT(total, available);
}

TEST_F(Library, PathsAreTakenApart)
{
    EXPECT_EQ(library.GetFileTitle(QStringLiteral("C:\\a\\b.tar.gz")), u"b.tar.gz");
    EXPECT_EQ(library.GetFileTitle(QStringLiteral("b")), u"b");
    EXPECT_EQ(library.GetFileExt(QStringLiteral("b.tar.gz")), u"gz");
    EXPECT_EQ(library.GetFileExt(QStringLiteral("b")), QString());
    EXPECT_EQ(library.GetFileTitleEx(QStringLiteral("C:\\a\\b.tar.gz")), u"b.tar");
    EXPECT_EQ(library.GetDirName(QStringLiteral("C:\\a\\b.txt")), u"C:\\a");
    EXPECT_EQ(library.GetDirName(QStringLiteral("b.txt")), u"b.txt");
}

// The package's own folder takes no text, no setting, no folder and no log, not even from root.
TEST(InstalledProgram, IsReadAndNeverWritten)
{
    const QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("data"));
    QDir().mkpath(data + QStringLiteral("/ini"));
    QFile file(dir.filePath(QStringLiteral("file"))); // nobody makes a folder below it
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const platform::PathMap paths;
    const platform::SystemColors colors;
    ProgramContext program(paths, programFolders(paths, dir.path(), data, {}, file.fileName() + u'/').folders, {},
                           colors);
    program.errorLog().LogWrite(QStringLiteral("an error"));
    EXPECT_EQ(program.library().tranStr(QStringLiteral("Quit?")), u"Quit?");
    EXPECT_FALSE(program.library().MakeDir(program.machine().folders.program() + QStringLiteral("\\New")));
    EXPECT_EQ(QDir(data).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{QStringLiteral("ini")});
    EXPECT_TRUE(QDir(data + QStringLiteral("/ini")).isEmpty());
}

} // namespace
