#include "FakeForm.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

using platform::ControlKind;
using platform::FormProperty;

namespace {

class Translation : public ::testing::Test
{
protected:
    Translation() : library(box.context)
    {
        box.context.settings = settings;
        box.context.languageFile = QStringLiteral("T.txt");
    }

    inline static const QString kFolder = QStringLiteral("C:\\Vorlant\\Lang\\");

    void put(const QString& name, const QByteArray& bytes) const { ASSERT_TRUE(box.put(kFolder + name, bytes)); }

    QByteArray content(const QString& name = QStringLiteral("T.txt")) const { return box.content(kFolder + name); }

    TestMachine box;
    clsCfg settings;
    clsLibrary library;
};

TEST_F(Translation, TextsAreLookedUpByTheirEnglishWording)
{
    put(QStringLiteral("T.txt"), "[Language]\r\nQuit?=\x8fI\x97\xb9?\r\nTwo=OnevbCrLfTwovbCRLF\r\nEmpty=\r\n");
    struct
    {
        const char* english;
        QString shown;
    } const rows[] = {{"Quit?", QStringLiteral("終了?")},          {"quit?", QStringLiteral("終了?")},
                      {"Two", QStringLiteral("One\r\nTwovbCRLF")}, {"Empty", QStringLiteral("Empty")},
                      {"Unknown", QStringLiteral("Unknown")},      {"no=key", QStringLiteral("no=key")},
                      {"[no key", QStringLiteral("[no key")}};
    for (const auto& row : rows)
        EXPECT_EQ(library.tranStr(QLatin1String(row.english)), row.shown) << row.english;
    EXPECT_TRUE(content().contains("\r\nUnknown=Unknown\r\n")) << content().toStdString();
    EXPECT_TRUE(content().contains("\r\nEmpty=Empty\r\n"));
}

TEST_F(Translation, WithoutALanguageTheTextsGoToTheDefaultFile)
{
    box.context.languageFile.clear();
    EXPECT_EQ(library.tranStr(QStringLiteral("Quit?")), u"Quit?");
    EXPECT_TRUE(content(QStringLiteral("Vorlant.ini")).contains("Quit?=Quit?"));
    box.context.translates = false;
    EXPECT_EQ(library.tranStr(QStringLiteral("Other")), u"Other");
    EXPECT_FALSE(content(QStringLiteral("Vorlant.ini")).contains("Other"));
}

TEST_F(Translation, NameThatIsRefusedLeadsToNoOtherFile)
{
    box.context.languageFile = QStringLiteral("..\\Lang\\Fr?.txt");
    EXPECT_EQ(library.tranStr(QStringLiteral("Quit?")), u"Quit?");
    EXPECT_EQ(content(QStringLiteral("Vorlant.ini")), QByteArray());
}

// Each gives the English text, and a file that is no language file is not touched.
TEST_F(Translation, UnusableFilesGiveEnglishTexts)
{
    const QByteArray binary("\x7F"
                            "ELF\x02\x00\xFF\xFE[Id]\x00=\r\r\n\x83",
                            19);
    struct
    {
        const char* name;
        QByteArray bytes;
        bool completed;
    } const rows[] = {{"Empty.txt", "", true},
                      {"Binary.txt", binary, true},
                      {"Half.txt", "[Language]\r\nQuit?=\x8fI\x97\xb9?\r\nOt", true},
                      {"Large.txt", QByteArray(Translator::kMaxFileBytes + 1, 'x'), false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QString name = QLatin1String(row.name);
        put(name, row.bytes);
        box.context.languageFile = name;
        EXPECT_EQ(library.tranStr(QStringLiteral("Other")), u"Other");
        EXPECT_TRUE(content(name).startsWith(row.bytes)) << "what was there stays";
        EXPECT_EQ(content(name).size() > row.bytes.size(), row.completed);
    }
    ASSERT_TRUE(QDir().mkdir(box.path(kFolder + QStringLiteral("Folder.txt"))));
    box.context.languageFile = QStringLiteral("Folder.txt");
    EXPECT_EQ(library.tranStr(QStringLiteral("Other")), u"Other");
}

TEST_F(Translation, LanguageListNamesFilesWithAName)
{
    put(QStringLiteral("EN.txt"), "[Info]\nName=English\nLocaleID=09\nVersion=1.0\n");
    put(QStringLiteral("JP.txt"), "[Info]\nName=Japanese\nLocaleID=11\nVersion=1.2\n");
    put(QStringLiteral("Notes.txt"), "no language\n");
    put(QStringLiteral(".EN.txt.new"), "[Info]\nName=Hidden\nLocaleID=07\n");
    LanguageList list(box.context);
    EXPECT_EQ(list.defaultFile(), QString());
    list.rebuild(QStringLiteral("11"));
    EXPECT_EQ(list.defaultFile(), u"JP.txt");
    list.rebuild(QStringLiteral("07"));
    EXPECT_EQ(list.defaultFile(), u"EN.txt");
    const QByteArray text = box.content(QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini"));
    EXPECT_TRUE(text.contains("Language1=English  [EN.txt  Ver(1.0)]")) << text.toStdString();
    EXPECT_TRUE(text.contains("LanguageFile2=JP.txt"));
    EXPECT_TRUE(text.contains("LanguageMax=2"));
    EXPECT_EQ(content(QStringLiteral("Notes.txt")), "no language\n") << "language files are only read";
}

TEST_F(Translation, ForcedFontOffGivesTheDesignedFontsBack)
{
    put(QStringLiteral("T.txt"), "[Font]\nfrmX-Label-0=Serif\n");
    FakeForm form;
    FakeControl& label = form.add("Label", 0);
    FakeControl& other = form.add("Other", 1);
    settings.m_sFont = QStringLiteral("Forced");
    settings.m_sFontSize = QStringLiteral("20");
    for (const bool forced : {true, false}) {
        settings.m_bForceFont = forced;
        library.tranForm(form);
        EXPECT_EQ(form.values[FormProperty::Font], forced ? u"Forced" : u"Sans");
        EXPECT_EQ(label.values[FormProperty::Font], forced ? u"Forced" : u"Serif");
        EXPECT_EQ(other.values[FormProperty::Font], forced ? u"Forced" : u"FixedSys");
        for (const FakeControl* control : {&label, &other})
            EXPECT_EQ(control->values[FormProperty::FontSize], forced ? u"20" : u"9");
    }
    EXPECT_FALSE(content().contains("Forced") || content().contains("=20")) << content().toStdString();
}

} // namespace
