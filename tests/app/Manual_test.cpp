#include "HelpFiles.h"
#include "HelpTopics.h"
#include "MessageTopics.h"
#include "PathMap.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

const QString kEnglish = VORLANT_DATA_DIR "/help/Vorlant/";
const QString kJapanese = VORLANT_DATA_DIR "/help/VorlantJ/";

QString read(const QString& file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? QString::fromUtf8(in.readAll()) : QString();
}

QStringList captures(const QString& file, const char* pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(read(file));
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

QStringList ids(const QString& file)
{
    return captures(file, " id=\"([^\"]+)\"");
}

TEST(Manual, PagesLeadSomewhereAndAreTheSameInBothLanguages)
{
    const QStringList pages = QDir(kEnglish).entryList({"*.html"});
    ASSERT_GE(pages.size(), 12);
    EXPECT_EQ(QDir(kJapanese).entryList({"*.html"}), pages);
    for (const QString& page : pages) {
        SCOPED_TRACE(qPrintable(page));
        QStringList own = ids(kEnglish + page);
        EXPECT_EQ(ids(kJapanese + page), own);
        EXPECT_EQ(own.removeDuplicates(), 0) << "an id twice";
        const QStringList links = captures(kEnglish + page, "(?:href|src)=\"([^\"]+)\"");
        EXPECT_EQ(captures(kJapanese + page, "(?:href|src)=\"([^\"]+)\""), links);
        EXPECT_FALSE(links.isEmpty());
        for (const QString& link : links) {
            const QString target = link.startsWith(u'#') ? page : link.section(u'#', 0, 0);
            EXPECT_TRUE(QFile::exists(kEnglish + target) && QFile::exists(kJapanese + target)) << qPrintable(link);
            const QString id = link.section(u'#', 1);
            EXPECT_TRUE(id.isEmpty() || ids(kEnglish + target).contains(id)) << qPrintable(link);
        }
        for (const QString& manual : {kEnglish, kJapanese})
            EXPECT_TRUE(read(manual + page).contains(u"<meta charset=\"utf-8\">"));
    }
}

TEST(HelpTopics, AreInTheManualAndTheNearestKnownPlaceCounts)
{
    for (const HelpTopicRow& row : helpTopicRows()) {
        const QString anchor = QString::fromUtf16(row.anchor);
        EXPECT_TRUE(ids(kEnglish + QString::fromUtf16(row.page)).contains(anchor)) << qPrintable(anchor);
    }
    const HelpTopic port = helpTopic({{"frmComSet", "Combo1"}, {"frmComSet", "Frame1"}});
    EXPECT_EQ(port.page + u'#' + port.anchor, u"connecting.html#com");
    EXPECT_EQ(helpTopic({{"frmNew", "Combo1"}}).page, u"index.html");
}

TEST(MessageTopics, AreFoundByTheirText)
{
    const std::tuple<QString, const char*, const char*> rows[] = {
        {kEnglish, "Quit?", "quit"},
        {kJapanese, "終了しますか？", "quit"},
        {kEnglish, "It is outside the setting range.[ 0 <= ( SV ) <= 1300 ]", "it-is-outside-the-setting-range"},
        {kEnglish, "Transfer All Data.Sure?", "transfer-all-data-sure"},
        {kEnglish, "Transfer All Data.", "transfer-all-data"},
        {kEnglish, "/home/a/x.kx410 is too large for a parameter file.", "is-too-large-for-a-parameter-file"},
        {kEnglish, "Nobody ever says this.", ""}};
    for (const auto& [manual, text, id] : rows)
        EXPECT_EQ(MessageTopics(read(manual + "messages.html")).idOf(text), id) << text;
}

TEST(HelpFiles, AreThoseOfTheLanguage)
{
    EXPECT_EQ(platform::helpFile("C:\\Vorlant", "JP.txt"), u"C:\\Vorlant\\VorlantJ.chm");
    for (const char* other : {"EN.txt", "jp.txt", ""})
        EXPECT_EQ(platform::helpFile("C:\\Vorlant", other), u"C:\\Vorlant\\Vorlant.chm");
    platform::PathMap paths;
    paths.mount(u'C', "/srv/kx");
    const std::pair<const char*, const char*> rows[] = {{"C:\\Vorlant\\Vorlant.chm", "/srv/kx/Vorlant/help/Vorlant"},
                                                        {"C:\\Vorlant\\VorlantJ.chm", "/srv/kx/Vorlant/help/VorlantJ"},
                                                        {"C:\\VorlantJ.chm", "/srv/kx/help/VorlantJ"},
                                                        {"C:\\Vorlant\\", ""},
                                                        {"VorlantJ.chm", ""},
                                                        {"", ""}};
    for (const auto& [file, edition] : rows)
        EXPECT_EQ(platform::helpEdition(paths, file), edition) << file;
}

} // namespace
