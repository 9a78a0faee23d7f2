#include "FakeForm.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <QFile>
#include <gtest/gtest.h>

using platform::ControlKind;
using platform::FormProperty;

namespace {

class Translation : public ::testing::Test
{
protected:
    Translation() : library(box.context)
    {
        box.context.settings = &settings;
        box.context.languageFile = QStringLiteral("T.txt");
    }

    QString file(const QString& name) const { return box.path(QStringLiteral("C:\\Vorlant\\Lang\\") + name); }

    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    QByteArray content(const QString& name = QStringLiteral("T.txt")) const
    {
        QFile in(file(name));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

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

TEST_F(Translation, EmptyTextTouchesNoFile)
{
    EXPECT_EQ(library.tranStr(QString()), QString());
    EXPECT_FALSE(QFile::exists(file(QStringLiteral("T.txt"))));
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
        FakeForm form;
        library.tranForm(form);
        EXPECT_EQ(form.values[FormProperty::Caption], u"Design");
        EXPECT_TRUE(content(name).startsWith(row.bytes)) << "what was there stays";
        EXPECT_EQ(content(name).size() > row.bytes.size(), row.completed);
    }
    ASSERT_TRUE(QDir().mkdir(file(QStringLiteral("Folder.txt"))));
    box.context.languageFile = QStringLiteral("Folder.txt");
    EXPECT_EQ(library.tranStr(QStringLiteral("Other")), u"Other");
}

TEST_F(Translation, ControlsAreNamedByFormNameAndRunningIndex)
{
    put(QStringLiteral("T.txt"), "[frmX]\nCaption=Fenster\n[Caption]\nfrmX-first-0=eins\nfrmX-array-3=zwei\n"
                                 "frmX-after-3=drei\n[Font]\nfrmX-first-0=Serif\n[FontSize]\nfrmX-first-0=12\n"
                                 "[ToolTipText]\nfrmX-array-3=Hinweis\n");
    FakeForm form;
    FakeControl& first = form.add("first", std::nullopt);
    FakeControl& array = form.add("array", 3);
    FakeControl& after = form.add("after", std::nullopt);
    FakeControl& bare = form.add("bare", std::nullopt, ControlKind::Plain, {});
    library.tranForm(form);
    EXPECT_EQ(form.values[FormProperty::Caption], u"Fenster");
    EXPECT_EQ(first.values[FormProperty::Caption], u"eins");
    EXPECT_EQ(first.values[FormProperty::Font], u"Serif");
    EXPECT_EQ(first.values[FormProperty::FontSize], u"12");
    EXPECT_EQ(array.values[FormProperty::Caption], u"zwei");
    EXPECT_EQ(array.values[FormProperty::ToolTipText], u"Hinweis");
    EXPECT_EQ(array.values[FormProperty::Font], u"FixedSys") << "the face of controls that no file mentions";
    EXPECT_EQ(after.values[FormProperty::Caption], u"drei");
    EXPECT_TRUE(bare.values.isEmpty());
    EXPECT_TRUE(content().contains("frmX-array-3=FixedSys"));
    EXPECT_FALSE(content().contains("bare"));
}

TEST_F(Translation, GridTabsToolbarAndStatusBarHaveTheirOwnKeys)
{
    put(QStringLiteral("T.txt"), "[Caption]\nfrmX-tabs-1=Zweite\nfrmX-bar-0-Button2=Senden\n[Font]\nfrmX-grid=Serif\n"
                                 "frmX-grid-0=Wrong\nfrmX-status-0=Wrong\n");
    FakeForm form;
    FakeControl& tabs = form.add("tabs", std::nullopt, ControlKind::TabStrip);
    FakeControl& bar = form.add("bar", std::nullopt, ControlKind::Toolbar);
    FakeControl& grid = form.add("grid", std::nullopt, ControlKind::Grid);
    FakeControl& status = form.add("status", std::nullopt, ControlKind::StatusBar);
    tabs.numbers = {0, 1};
    bar.numbers = {1, 2};
    tabs.partTexts = {{0, QStringLiteral("First")}, {1, QStringLiteral("Second")}};
    bar.partTexts = {{1, QStringLiteral("Recv")}, {2, QStringLiteral("Send")}};
    library.tranForm(form);
    EXPECT_EQ(tabs.partTexts[0], u"First");
    EXPECT_EQ(tabs.partTexts[1], u"Zweite");
    EXPECT_EQ(bar.partTexts[2], u"Senden");
    EXPECT_EQ(grid.values[FormProperty::Font], u"Serif");
    EXPECT_EQ(grid.values[FormProperty::FontSize], u"9") << "the size of cells is the definition's";
    EXPECT_EQ(status.values[FormProperty::Font], u"System");
    EXPECT_TRUE(content().contains("frmX-tabs-0=First"));
    EXPECT_TRUE(content().contains("frmX-bar-0-Button1=Recv"));
}

TEST_F(Translation, ForcedFontTouchesNoFontKey)
{
    settings.m_bForceFont = true;
    settings.m_sFont = QStringLiteral("Serif");
    settings.m_sFontSize = QStringLiteral("14");
    settings.m_lCharSet = 128;
    FakeForm form;
    FakeControl& label = form.add("label", std::nullopt);
    FakeControl& grid = form.add("grid", std::nullopt, ControlKind::Grid);
    library.tranForm(form);
    EXPECT_EQ(form.values[FormProperty::Font], u"Serif");
    EXPECT_EQ(label.values[FormProperty::FontSize], u"14");
    EXPECT_EQ(label.values[FormProperty::FontCharSet], u"128");
    EXPECT_EQ(grid.values[FormProperty::Font], u"Serif");
    EXPECT_EQ(grid.values[FormProperty::FontSize], u"9");
    EXPECT_FALSE(content().contains("Font")) << content().toStdString();
}

TEST_F(Translation, CaptionWithADocumentNameStays)
{
    FakeForm form;
    form.values[FormProperty::Caption] = QStringLiteral("Vorlant - [a.k41]");
    library.tranForm(form);
    EXPECT_EQ(form.values[FormProperty::Caption], u"Vorlant - [a.k41]");
}

TEST_F(Translation, LanguageListNamesFilesWithAName)
{
    put(QStringLiteral("EN.txt"), "[Info]\nName=English\nLocaleID=09\nVersion=1.0\n");
    put(QStringLiteral("JP.txt"), "[Info]\nName=Japanese\nLocaleID=11\nVersion=1.2\n");
    put(QStringLiteral("Notes.txt"), "no language\n");
    LanguageList list(box.context);
    EXPECT_EQ(list.defaultFile(), QString());
    list.rebuild(QStringLiteral("11"));
    EXPECT_EQ(list.defaultFile(), u"JP.txt");
    list.rebuild(QStringLiteral("07"));
    EXPECT_EQ(list.defaultFile(), u"EN.txt");
    QFile settingsFile(box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini")));
    ASSERT_TRUE(settingsFile.open(QIODevice::ReadOnly));
    const QByteArray text = settingsFile.readAll();
    EXPECT_TRUE(text.contains("Language1=English  [EN.txt  Ver(1.0)]")) << text.toStdString();
    EXPECT_TRUE(text.contains("LanguageFile2=JP.txt"));
    EXPECT_TRUE(text.contains("LanguageMax=2"));
    EXPECT_EQ(content(QStringLiteral("Notes.txt")), "no language\n") << "language files are only read";
}

TEST_F(Translation, EmptyFolderListsOneLanguage)
{
    LanguageList list(box.context);
    list.rebuild(QStringLiteral("11"));
    EXPECT_EQ(list.defaultFile(), u"EN.txt");
    QFile settingsFile(box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini")));
    ASSERT_TRUE(settingsFile.open(QIODevice::ReadOnly));
    const QByteArray text = settingsFile.readAll();
    for (const char* line : {"Language1=Japanese", "LanguageFile1=JP.txt", "LanguageMax=1"})
        EXPECT_TRUE(text.contains(line)) << line;
}

} // namespace
