#include "ProgramContext.h"
#include "ScratchFolder.h"
#include "Table.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

namespace {

class Library : public ::testing::Test
{
protected:
    TestMachine box;
    clsLibrary library{box.context};
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
    const std::tuple<QVariant, bool, int, int, double> rows[] = {{1, true, 1, 1, 1},
                                                                 {0, false, 0, 0, 0},
                                                                 {1.0, true, 1, 1, 1},
                                                                 {true, true, -1, -1, -1},
                                                                 {-32769.0, false, -32769, 77, -32769},
                                                                 {2147483647.5, false, 77, 77, 2147483647.5},
                                                                 {QVariant(), false, 77, 77, 77}};
    for (const auto& [value, boolean, number, small, real] : rows) {
        SCOPED_TRACE(qPrintable(value.toString()));
        EXPECT_EQ(library.toBoolean(value, true), boolean);
        EXPECT_EQ(library.toLong(value, 77), number);
        EXPECT_EQ(library.toInteger(value, 77), small);
        EXPECT_EQ(library.toDouble(value, 77), real);
    }
    EXPECT_EQ(library.toCheckVal(true, 77), 1);
    EXPECT_EQ(library.toCheckVal(1.5, 77), 0);
    EXPECT_EQ(library.toSingle("1e39", 7.0F), 7.0F);
    EXPECT_EQ(library.toSingle(0.1, 7.0F), 0.1F);
    EXPECT_EQ(library.toDouble("1e39", 7.0), 1e39);
    EXPECT_EQ(library.toModalVal(true) + library.toModalVal(false), 1);
}

TEST_F(Library, FoldersFilesAndSwitches)
{
    ASSERT_TRUE(box.put("C:\\file", ""));
    EXPECT_TRUE(library.MakeDir("C:\\a\\b\\c\\") && library.DirExists("C:\\A\\B\\C"));
    EXPECT_TRUE(library.MakeDir("below") && library.DirExists("C:\\Vorlant\\below"));
    EXPECT_TRUE(library.MakeDir("C:\\d"));
    for (const char* refused : {"C:\\a\\\\b", "C:\\", "Q:\\a\\b", "C:\\a?b", "C:\\file\\b"})
        EXPECT_FALSE(library.MakeDir(refused)) << refused;
    EXPECT_TRUE(library.FileExists("C:\\FILE"));
    EXPECT_FALSE(library.FileExists("C:\\a"));
    EXPECT_EQ(library.GetFileTitle("C:\\a\\b.tar.gz") + library.GetDirName("C:\\a\\b.c"), u"b.tar.gzC:\\a");
    EXPECT_EQ(library.GetCommand("/Lfile.txt /X", "/l", false), u"FILE.TXT ");
    EXPECT_EQ(library.HexString(QByteArray("\x01\xAB\xFF", 3)), u"01ABFF");
}

TEST_F(Library, ColoursAreRead)
{
    const std::pair<const char*, qint32> rows[] = {
        {" vbRed ", 255},  {"VBRED", 0},  {"vbNothing", 42}, {"RGB.0.128.255", 0xFF8000},
        {"RGB.1.2.x", 42}, {"&hFF", 255}, {"Red", 0},        {"99999999999", 42}};
    for (const auto& [text, color] : rows)
        EXPECT_EQ(library.StrToColor(text, 42), color) << text;
    EXPECT_EQ(library.StrToColor("vbHighlight", 0), static_cast<qint32>(box.colors.color(13)));
}

TEST_F(Library, SettingsFillTheFileAndComeBack)
{
    clsCfg settings;
    settings.init(&library);
    settings.load();
    const auto file = [this] { return box.content("C:\\Users\\AppData\\Vorlan\\Vorlant.ini"); };
    EXPECT_TRUE(file().contains("ForceFont=System\r\nForceFontSize=9"));
    library.saveINIParam("Setting", "ShowSendConfForm", "yes");
    library.saveINIParam("Setting", "UseCommunicate", "1");
    library.saveINIParam("Setting", "ForceFontCharSet", "abc");
    settings.load();
    EXPECT_FALSE(settings.m_bViewSendConf);
    EXPECT_TRUE(settings.m_bComm);
    EXPECT_EQ(settings.m_lCharSet, 0);
    settings.m_sFont = "ゴシック";
    settings.m_bViewSendConf = settings.m_bLoadView = true;
    EXPECT_TRUE(settings.save().ok());
    EXPECT_TRUE(file().contains("ShowSendConfForm=True") && file().contains("ShowLoadingScreen=True"));
    settings.m_sFont.clear();
    settings.load();
    EXPECT_EQ(settings.m_sFont, u"ゴシック");
}

TEST(UserLocale, FollowsTheLanguage)
{
    for (const QStringList& row : tableRows("infra/locales.tsv")) {
        const platform::UserLocale locale{QLocale(row[0])};
        EXPECT_EQ(locale.languageCode(), row[1]) << qPrintable(row[0]);
        EXPECT_TRUE(row[2] == u"-" || locale.shortDate() == row[2]) << qPrintable(row[0]);
    }
}

// The package's own folder takes no text, no setting, no folder and no log, not even from root.
TEST(InstalledProgram, IsReadAndNeverWritten)
{
    const ScratchFolder box;
    ASSERT_TRUE(box.put("data/ini/KX410Screen.ini", "") && box.put("file", "")); // nobody makes a folder below a file
    const platform::PathMap paths;
    const platform::SystemColors colors;
    ProgramContext program(paths, programFolders(paths, box.path(), box.path("data"), {}, box.path("file/")).folders,
                           {}, colors);
    program.errorLog().LogWrite("an error");
    EXPECT_EQ(program.library().tranStr("Quit?"), u"Quit?");
    EXPECT_FALSE(program.library().MakeDir(program.machine().folders.program() + "\\New"));
    EXPECT_EQ(box.names("data") + box.names("data/ini"), QStringList({"ini", "KX410Screen.ini"}));
}

} // namespace
