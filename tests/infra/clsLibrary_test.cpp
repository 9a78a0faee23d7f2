#include "ProgramContext.h"
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
    struct
    {
        QVariant value;
        bool boolean;
        int number; // fallback 77
        int small;  // 16 bits, fallback 77
    } const rows[] = {
        {QStringLiteral("TRUE"), true, 77, 77},
        {QStringLiteral("tRUE"), false, 77, 77},
        {QStringLiteral("-1"), false, -1, -1},
        {QStringLiteral("2.5"), false, 2, 2},
        {QStringLiteral("abc"), false, 77, 77},
        {QStringLiteral("&hFF"), false, 255, 255},
        {QStringLiteral("32768"), false, 32768, 77},
        {QStringLiteral("2147483648"), false, 77, 77},
        {-32769.0, false, -32769, 77},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.value.toString()));
        EXPECT_EQ(library.toBoolean(row.value, true), row.boolean);
        EXPECT_EQ(library.toLong(row.value, 77), row.number);
        EXPECT_EQ(library.toInteger(row.value, 77), row.small);
    }
}

TEST_F(Library, NamesAndPathsAreChecked)
{
    struct
    {
        const char* text;
        bool fileName;
        bool pathName;
    } const rows[] = {
        {"data.k41", true, true}, {"a b", false, true},           {"", false, false},     {"a/b", false, false},
        {"\\data", false, false}, {"\\\\server\\s", false, true}, {"\\\\", false, false}, {"C:\\a:b", false, false},
        {"9:\\a", false, false},  {"a?b", false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(library.FileName_Check(QLatin1String(row.text), 0), row.fileName) << row.text;
        EXPECT_EQ(library.PathName_Check(QLatin1String(row.text)), row.pathName) << row.text;
    }
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
    struct
    {
        const char* name;
        const char* code;
        const char* shortDate;
        const char* decimal;
    } const rows[] = {{"en_US", "09", "MM/DD/YYYY", "46"},
                      {"en_GB", "09", "DD/MM/YYYY", "46"},
                      {"ja_JP", "11", "YYYY/MM/DD", "46"},
                      {"de_DE", "07", "DD/MM/YYYY", "44"},
                      {"sr_RS", "1A", "", "44"},
                      {"mi_NZ", "81", "", "46"},
                      {"C", "00", "", "46"}};
    for (const auto& row : rows) {
        const platform::UserLocale locale{QLocale(QLatin1String(row.name))};
        EXPECT_EQ(locale.languageCode(), QLatin1String(row.code)) << row.name;
        if (*row.shortDate != '\0') {
            EXPECT_EQ(locale.shortDate(), QLatin1String(row.shortDate)) << row.name;
        }
        EXPECT_EQ(locale.decimalSeparatorCode(), QLatin1String(row.decimal)) << row.name;
    }
}

TEST_F(Library, FilesHaveTheirPlaces)
{
    EXPECT_EQ(library.toCheckVal(QStringLiteral("yes"), 5), 0);
    EXPECT_EQ(library.toSingle(QStringLiteral("1e39"), 7.0F), 7.0F);
    EXPECT_EQ(library.toDouble(QStringLiteral("1e39"), 7.0), 1e39);
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

TEST_F(Library, ColourTableEndsWithAnEmptySlot)
{
    QString name;
    QString comment;
    library.getColorTable(9, name, comment);
    EXPECT_EQ(name + u'/' + comment, u"vbLightYellow/LghtYellow");
    library.getColorTable(43, name, comment);
    EXPECT_EQ(name, u"vbInfoBackground");
    library.getColorTable(library.getColorTableUbound(), name, comment);
    EXPECT_EQ(name + comment, QString());
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
