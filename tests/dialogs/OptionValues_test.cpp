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

TEST_F(Options, LanguageOfTheList)
{
    const QByteArray others = "[Language]\nLanguageMax=1\nLanguage1=English\nLanguageFile1=EN.txt\n";
    const QByteArray otherCase = "[Language]\nLanguageMax=1\nLanguage1=J\nLanguageFile1=jp.txt\n";
    // what the dialog shows, what is selected, what is stored, whether that is a change
    const std::tuple<const char*, QByteArray, int, int, const char*, bool> rows[] = {
        {"changed", kTwoLanguages, 1, 0, "EN.txt", true},
        {"not in the list, then chosen", others, -1, 0, "EN.txt", true},
        {"other case", otherCase, -1, -1, "JP.txt", false},
        {"no list yet", "", 0, 0, "JP.txt", false},
    };
    for (const auto& [name, list, shown, selected, stored, isChange] : rows) {
        open("", list);
        EXPECT_EQ(values.language(), shown) << name;
        values.setLanguage(selected);
        EXPECT_EQ(values.changeDesign(), isChange) << name;
        EXPECT_TRUE(values.store().ok());
        EXPECT_EQ(box.context.languageFile.toStdString(), stored) << name;
        EXPECT_TRUE(settingsFile().contains(QByteArray("LanguageFile=") + stored)) << name;
    }
}

TEST_F(Options, AFailedSaveIsReported)
{
    open("");
    ASSERT_TRUE(QFile::remove(box.path(kSettings)) && QDir().mkdir(box.path(kSettings)));
    EXPECT_TRUE(values.store().error().contains(u"Vorlant.ini cannot be"));
}

TEST_F(Options, FontOfTheDialog)
{
    const char* const plain = "ForceFont=System\nForceFontSize=9\n";
    // what is stored and shown, what is chosen, what is shown and stored then, whether that is a change
    const std::tuple<const char*, const char*, FontRecord, const char*, const char*, bool> rows[] = {
        {plain, "System:9pt", {"Mono", 90, 0, -12, 0}, "Mono:9pt", "ForceFontSize=9", true},
        {plain, "System:9pt", {"System", 90, 128, 0, 0}, "System:9pt", "ForceFontCharSet=128", true},
        {"ForceFontSize=9.0\n", "System:9.0pt", {"System", 90, 0, 0, 0}, "System:9.0pt", "ForceFontSize=9.0", false},
        {"ForceFontSize=1E30\n", "System:1E30pt", {"Mono", 80, 0, 0, 0}, "Mono:8pt", "ForceFontSize=8", true},
    };
    for (const auto& [stored, shown, chosen, shownThen, storedThen, isChange] : rows) {
        SCOPED_TRACE(storedThen);
        open(stored);
        EXPECT_EQ(values.fontText().toStdString(), shown);
        values.setFont(chosen);
        EXPECT_EQ(values.fontText().toStdString(), shownThen);
        EXPECT_EQ(values.changeDesign(), isChange);
        EXPECT_TRUE(values.store().ok());
        EXPECT_TRUE(settingsFile().contains(storedThen));
    }
}

} // namespace
