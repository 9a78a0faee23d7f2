#include "OptionValues.h"

#include "OptionsFixture.h"
#include "ProgramVersion.h"

#include <functional>

namespace {

class Options : public OptionsFixture
{
protected:
    void open(const QByteArray& setting = {}, const QByteArray& languages = kTwoLanguages)
    {
        load(setting, languages);
        values.load();
    }

    OptionValues values{library, settings};
};

struct Field
{
    const char* key;
    bool clsCfg::*field;
    bool retranslates;
};

constexpr Field kFields[] = {
    {"ShowRecieveConfForm", &clsCfg::m_bViewRecvConf, false},
    {"ShowSendConfForm", &clsCfg::m_bViewSendConf, false},
    {"ShowProgramEndConfForm", &clsCfg::m_bViewEndConf, false},
    {"ColWidthAdjustDesign", &clsCfg::m_bAdjustDesign, true},
    {"ForceAppFontUpdate", &clsCfg::m_bForceFont, true},
    {"ShowLoadingScreen", &clsCfg::m_bLoadView, false},
    {"UseCommunicate", &clsCfg::m_bComm, false},
    {"ShowInputSelectConfForm", &clsCfg::m_bViewInputConf, false},
    {"ShowUnitSelectConfForm", &clsCfg::m_bViewUnitConf, false},
    {"NotPermitPrevInstance", &clsCfg::m_bPrevInstance, false},
};

TEST_F(Options, EachCheckBoxIsOneSetting)
{
    for (int i = 0; i < OptionValues::kChecks; ++i) {
        const Field& row = kFields[i];
        for (const bool on : {true, false}) {
            open(QByteArray(row.key) + (on ? "=False\n" : "=True\n"));
            ASSERT_EQ(values.isChecked(i), !on) << row.key;
            values.setChecked(i, on);
            EXPECT_EQ(values.store(), row.retranslates) << row.key;
            EXPECT_EQ(settings.*row.field, on) << row.key;
            EXPECT_TRUE(settingsFile().contains(QByteArray(row.key) + (on ? "=True" : "=False"))) << row.key;
            for (const Field& other : kFields) {
                EXPECT_EQ(settings.*other.field, on && &other == &row) << row.key << " is not " << other.key;
            }
        }
    }
}

struct Language
{
    const char* name;
    QByteArray list;
    int shown;    // when the dialog opens
    int selected; // by the user
    const char* stored;
    bool changed;
};

TEST_F(Options, LanguageOfTheList)
{
    const QByteArray others = "[Language]\nLanguageMax=1\nLanguage1=English\nLanguageFile1=EN.txt\n";
    const QByteArray otherCase = "[Language]\nLanguageMax=1\nLanguage1=J\nLanguageFile1=jp.txt\n";
    const Language rows[] = {
        {"kept", kTwoLanguages, 1, 1, "JP.txt", false},
        {"changed", kTwoLanguages, 1, 0, "EN.txt", true},
        {"not in the list", others, -1, -1, "JP.txt", false},
        {"not in the list, then chosen", others, -1, 0, "EN.txt", true},
        {"other case", otherCase, -1, -1, "JP.txt", false},
        {"no list yet", "", 0, 0, "JP.txt", false},
    };
    for (const Language& row : rows) {
        open("", row.list);
        EXPECT_EQ(values.language(), row.shown) << row.name;
        values.setLanguage(row.selected);
        EXPECT_EQ(values.store(), row.changed) << row.name;
        EXPECT_EQ(box.context.languageFile.toStdString(), row.stored) << row.name;
        EXPECT_TRUE(settingsFile().contains(QByteArray("LanguageFile=") + row.stored)) << row.name;
    }
}

struct Font
{
    const char* name;
    const char* stored;
    const char* shown;
    FontRecord chosen;
    const char* shownThen;
    const char* storedThen;
    bool changed;
};

TEST_F(Options, FontOfTheDialog)
{
    const char* const plain = "ForceFont=System\nForceFontSize=9\n";
    const Font rows[] = {
        {"another face", plain, "System:9pt", {"Mono", 90, 0, -12, 0}, "Mono:9pt", "ForceFontSize=9", true},
        {"half a point", plain, "System:9pt", {"System", 105, 0, -14, 0}, "System:10.5pt", "ForceFontSize=10.5", true},
        {"character set", plain, "System:9pt", {"System", 90, 128, 0, 0}, "System:9pt", "ForceFontCharSet=128", true},
        {"height only", plain, "System:9pt", {"System", 90, 0, -12, 3}, "System:9pt", "ForceFontHeight=-12", false},
        {"the same",
         "ForceFontSize=9.0\n",
         "System:9.0pt",
         {"System", 90, 0, 0, 0},
         "System:9.0pt",
         "ForceFontSize=9.0",
         false},
        {"no size", "ForceFontSize=big\n", "System:bigpt", {"Mono", 90, 0, 0, 0}, "Mono:9pt", "ForceFontSize=9", true},
        {"huge size",
         "ForceFontSize=1E30\n",
         "System:1E30pt",
         {"Mono", 80, 0, 0, 0},
         "Mono:8pt",
         "ForceFontSize=8",
         true},
    };
    for (const Font& row : rows) {
        open(row.stored);
        EXPECT_EQ(values.fontText().toStdString(), row.shown) << row.name;
        values.setFont(row.chosen);
        EXPECT_EQ(values.fontText().toStdString(), row.shownThen) << row.name;
        EXPECT_EQ(values.store(), row.changed) << row.name;
        EXPECT_TRUE(settingsFile().contains(row.storedThen)) << row.name << settingsFile().toStdString();
    }
}

TEST_F(Options, NothingReachesTheSettingsBeforeStore)
{
    open("UseCommunicate=True\n");
    const QByteArray before = settingsFile();
    values.setChecked(6, false);
    values.setLanguage(0);
    values.setFont({"Mono", 120, 0, 0, 0});
    EXPECT_TRUE(settings.m_bComm);
    EXPECT_EQ(box.context.languageFile, u"JP.txt");
    EXPECT_EQ(settingsFile(), before);
    values.load();
    EXPECT_TRUE(values.isChecked(6));
    EXPECT_EQ(values.fontText(), u"System:9pt");
}

TEST(ChkData, NeverTakesAChangeBack)
{
    bool changed = false;
    EXPECT_EQ(OptionValues::chkData(changed, QStringLiteral("a"), QStringLiteral("a")), u"a");
    EXPECT_FALSE(changed);
    EXPECT_EQ(OptionValues::chkData(changed, QStringLiteral("a"), QStringLiteral("A")), u"A");
    EXPECT_TRUE(changed);
    OptionValues::chkData(changed, QStringLiteral("a"), QStringLiteral("a"));
    EXPECT_TRUE(changed);
}

TEST_F(Options, VersionText)
{
    struct Row
    {
        ProgramVersion version;
        const char* text;
    };
    for (const Row& row : {Row{{1, 2, 5}, "Ver. 1.02.05"}, Row{{1, 2, 0}, "Ver. 1.02"}, Row{{0, 0, 0}, "Ver. 0.00"},
                           Row{{12, 34, 123}, "Ver. 12.34.123"}})
        EXPECT_EQ(row.version.text(library).toStdString(), row.text);
}

} // namespace
