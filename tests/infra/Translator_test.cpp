#include "FakeForm.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

using platform::FormProperty;

namespace {

class Translation : public ::testing::Test
{
protected:
    Translation()
    {
        box.context.settings = settings;
        box.context.languageFile = "T.txt";
    }

    void put(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(box.put("C:\\Vorlant\\Lang\\" + name, bytes));
    }
    QByteArray content(const QString& name = "T.txt") const { return box.content("C:\\Vorlant\\Lang\\" + name); }

    TestMachine box;
    clsCfg settings;
    clsLibrary library{box.context};
};

TEST_F(Translation, TextsAreLookedUpByTheirEnglishWording)
{
    put("T.txt", "[Language]\r\nQuit?=\x8fI\x97\xb9?\r\nTwo=OnevbCrLfTwovbCRLF\r\nEmpty=\r\n");
    const std::pair<const char*, const char*> rows[] = {
        {"Quit?", "終了?"},     {"quit?", "終了?"},   {"Two", "One\r\nTwovbCRLF"}, {"Empty", "Empty"},
        {"Unknown", "Unknown"}, {"no=key", "no=key"}, {"[no key", "[no key"}};
    for (const auto& [english, shown] : rows)
        EXPECT_EQ(library.tranStr(english), QString(shown)) << english;
    EXPECT_TRUE(content().contains("\r\nUnknown=Unknown\r\n")) << content().toStdString();
    EXPECT_TRUE(content().contains("\r\nEmpty=Empty\r\n"));
}

// A name that is refused leads to no other file.
TEST_F(Translation, OnlyWithoutALanguageTheTextsGoToTheDefaultFile)
{
    const std::tuple<const char*, bool, QByteArray> rows[] = {
        {"", true, "[Language]\r\nQuit?=Quit?\r\n"}, {"", false, ""}, {"..\\Lang\\Fr?.txt", true, ""}};
    for (const auto& [file, translates, kept] : rows) {
        put("Vorlant.ini", "");
        box.context.languageFile = file;
        box.context.translates = translates;
        EXPECT_EQ(library.tranStr("Quit?"), u"Quit?");
        EXPECT_EQ(content("Vorlant.ini"), kept) << file;
    }
}

// Each gives the English text, and a file that is no language file is not touched.
TEST_F(Translation, UnusableFilesGiveEnglishTexts)
{
    ASSERT_TRUE(QDir().mkdir(box.path("C:\\Vorlant\\Lang\\Folder.txt")));
    const QByteArray binary = QByteArray::fromHex("7F454C460200FFFE") + "[Id]" + QByteArray("\0=\r\r\n\x83", 6);
    const std::tuple<const char*, QByteArray, bool> rows[] = {
        {"Folder.txt", "", false},
        {"Empty.txt", "", true},
        {"Binary.txt", binary, true},
        {"Half.txt", "[Language]\r\nQuit?=\x8fI\x97\xb9?\r\nOt", true},
        {"Large.txt", QByteArray(Translator::kMaxFileBytes + 1, 'x'), false}};
    for (const auto& [name, bytes, isCompleted] : rows) {
        box.put(QString("C:\\Vorlant\\Lang\\") + name, bytes);
        box.context.languageFile = name;
        EXPECT_EQ(library.tranStr("Other"), u"Other") << name;
        EXPECT_TRUE(content(name).startsWith(bytes)) << name << ": what was there stays";
        EXPECT_EQ(content(name).size() > bytes.size(), isCompleted) << name;
    }
}

// Some keys are no texts to show.
TEST_F(Translation, WhatAFileLacksIsEnglish)
{
    put("Large.txt", QByteArray(Translator::kMaxFileBytes + 1, 'x'));
    put("Old.txt", "[Language]\r\nQuit?=\x8fI\x97\xb9?\r\n");
    for (const char* name : {"Missing.txt", "EN.txt", "Large.txt", "Old.txt"}) {
        box.context.languageFile = name;
        EXPECT_EQ(library.tranStr("ReviewHeld") + '|' + library.tranStr("Other"), u"Controller holds|Other") << name;
    }
    EXPECT_TRUE(content("Missing.txt").contains("ReviewHeld=Controller holds\r\n")) << "for a translator to go on with";
}

TEST_F(Translation, LanguageListNamesFilesWithAName)
{
    put("EN.txt", "[Info]\nName=English\nLocaleID=09\nVersion=1.0\n");
    put("JP.txt", "[Info]\nName=Japanese\nLocaleID=11\nVersion=1.2\n");
    put("Notes.txt", "no language\n");
    put(".EN.txt.new", "[Info]\nName=Hidden\nLocaleID=07\n");
    LanguageList list(box.context);
    EXPECT_EQ(list.defaultFile(), QString());
    list.rebuild("11");
    EXPECT_EQ(list.defaultFile(), u"JP.txt");
    list.rebuild("07");
    EXPECT_EQ(list.defaultFile(), u"EN.txt");
    const QByteArray text = box.content("C:\\Users\\AppData\\Vorlan\\Vorlant.ini");
    for (const char* line : {"Language1=English  [EN.txt  Ver(1.0)]", "LanguageFile2=JP.txt", "LanguageMax=2"})
        EXPECT_TRUE(text.contains(line)) << text.toStdString();
    EXPECT_EQ(content("Notes.txt"), "no language\n") << "language files are only read";
}

TEST_F(Translation, ForcedFontOffGivesTheDesignedFontsBack)
{
    put("T.txt", "[Font]\nfrmX-Label-0=Serif\n");
    FakeForm form;
    FakeControl& label = form.add("Label", 0);
    FakeControl& other = form.add("Other", 1);
    settings.m_sFont = "Forced";
    settings.m_sFontSize = "20";
    for (const bool forced : {true, false}) {
        settings.m_bForceFont = forced;
        library.tranForm(form);
        QStringList fonts;
        for (const auto* values : {&form.values, &label.values, &other.values})
            fonts << values->value(FormProperty::Font) + ' ' + values->value(FormProperty::FontSize);
        EXPECT_EQ(fonts.join(", "), forced ? u"Forced 20, Forced 20, Forced 20" : u"Sans 9, Serif 9, FixedSys 9");
    }
    EXPECT_FALSE(content().contains("Forced") || content().contains("=20")) << content().toStdString();
}

TEST_F(Translation, TabsAndButtonsOfAToolbarAreParts)
{
    put("T.txt", "[Caption]\nfrmX-Tabs-3=Eins\nfrmX-Bar-7-Button4=Zwei\n");
    FakeForm form;
    FakeControl& tabs = form.add("Tabs", {}, platform::ControlKind::TabStrip);
    FakeControl& bar = form.add("Bar", 7, platform::ControlKind::Toolbar);
    tabs.numbers = {3};
    bar.numbers = {4};
    library.tranForm(form);
    EXPECT_EQ(tabs.partTexts[3] + bar.partTexts[4], u"EinsZwei");
}

} // namespace
