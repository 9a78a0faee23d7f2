#include "OptionValues.h"

#include "OptionsFixture.h"

#include <QDir>
#include <QFile>

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
        {"changed", kTwoLanguages, 1, 0, "EN.txt", true},
        {"not in the list, then chosen", others, -1, 0, "EN.txt", true},
        {"other case", otherCase, -1, -1, "JP.txt", false},
        {"no list yet", "", 0, 0, "JP.txt", false},
    };
    for (const Language& row : rows) {
        open("", row.list);
        EXPECT_EQ(values.language(), row.shown) << row.name;
        values.setLanguage(row.selected);
        EXPECT_EQ(values.store().isShown, row.changed) << row.name;
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

TEST_F(Options, AFailedSaveIsReported)
{
    open("");
    ASSERT_TRUE(QFile::remove(box.path(kSettings)) && QDir().mkdir(box.path(kSettings)));
    EXPECT_TRUE(values.store().error.contains(u"Vorlant.ini cannot be"));
}

TEST_F(Options, FontOfTheDialog)
{
    const char* const plain = "ForceFont=System\nForceFontSize=9\n";
    const Font rows[] = {
        {"another face", plain, "System:9pt", {"Mono", 90, 0, -12, 0}, "Mono:9pt", "ForceFontSize=9", true},
        {"character set", plain, "System:9pt", {"System", 90, 128, 0, 0}, "System:9pt", "ForceFontCharSet=128", true},
        {"the same",
         "ForceFontSize=9.0\n",
         "System:9.0pt",
         {"System", 90, 0, 0, 0},
         "System:9.0pt",
         "ForceFontSize=9.0",
         false},
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
        EXPECT_EQ(values.store().isShown, row.changed) << row.name;
        EXPECT_TRUE(settingsFile().contains(row.storedThen)) << row.name << settingsFile().toStdString();
    }
}

} // namespace
