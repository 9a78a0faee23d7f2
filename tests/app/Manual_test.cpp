#include "HelpFiles.h"
#include "HelpTopics.h"
#include "MessageTopics.h"
#include "PathMap.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

const QString kEnglish = QStringLiteral(VORLANT_DATA_DIR "/help/Vorlant");
const QString kJapanese = QStringLiteral(VORLANT_DATA_DIR "/help/VorlantJ");

QString read(const QString& file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? QString::fromUtf8(in.readAll()) : QString();
}

QStringList pages(const QString& manual)
{
    return QDir(manual).entryList({QStringLiteral("*.html")});
}

QStringList captures(const QString& text, const char* pattern)
{
    QStringList found;
    auto matches = QRegularExpression(QLatin1String(pattern)).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

QStringList ids(const QString& page)
{
    return captures(read(page), " id=\"([^\"]+)\"");
}

class Manual : public ::testing::TestWithParam<const char*>
{
protected:
    QString folder() const { return QStringLiteral(VORLANT_DATA_DIR "/help/") + QLatin1String(GetParam()); }
};

TEST_P(Manual, HasEveryTopic)
{
    for (const HelpTopicRow& row : helpTopicRows()) {
        const QString page = QString::fromUtf16(row.page);
        EXPECT_TRUE(ids(folder() + u'/' + page).contains(QString::fromUtf16(row.anchor)))
            << qPrintable(page) << '#' << qPrintable(QString::fromUtf16(row.anchor));
    }
}

TEST_P(Manual, LinksAndPicturesLeadSomewhere)
{
    const QStringList all = pages(folder());
    ASSERT_GE(all.size(), 12);
    for (const QString& page : all) {
        const QString text = read(folder() + u'/' + page);
        const QStringList links = captures(text, "(?:href|src)=\"([^\"]+)\"");
        EXPECT_FALSE(links.isEmpty()) << qPrintable(page);
        for (const QString& link : links) {
            const QString target = link.section(u'#', 0, 0).isEmpty() ? page : link.section(u'#', 0, 0);
            const QString file = folder() + u'/' + target;
            EXPECT_TRUE(QFile::exists(file)) << qPrintable(page) << ": " << qPrintable(link);
            const QString id = link.section(u'#', 1);
            EXPECT_TRUE(id.isEmpty() || ids(file).contains(id)) << qPrintable(page) << ": " << qPrintable(link);
        }
        QStringList own = ids(folder() + u'/' + page);
        EXPECT_EQ(own.removeDuplicates(), 0) << qPrintable(page) << ": an id twice";
        EXPECT_TRUE(text.contains(u"<meta charset=\"utf-8\">")) << qPrintable(page);
    }
}

INSTANTIATE_TEST_SUITE_P(Language, Manual, ::testing::Values("Vorlant", "VorlantJ"),
                         [](const auto& row) { return std::string(row.param); });

TEST(Manuals, TellTheSameInBothLanguages)
{
    EXPECT_EQ(pages(kEnglish), pages(kJapanese));
    for (const QString& page : pages(kEnglish)) {
        EXPECT_EQ(ids(kEnglish + u'/' + page), ids(kJapanese + u'/' + page)) << qPrintable(page);
        const char* pictures = "src=\"([^\"]+)\"";
        EXPECT_EQ(captures(read(kEnglish + u'/' + page), pictures), captures(read(kJapanese + u'/' + page), pictures))
            << qPrintable(page);
    }
}

TEST(HelpTopics, NearestKnownPlaceCounts)
{
    const HelpTopic port = helpTopic({{QStringLiteral("frmComSet"), QStringLiteral("Combo1")},
                                      {QStringLiteral("frmComSet"), QStringLiteral("Frame1")}});
    EXPECT_EQ(port.page + u'#' + port.anchor, u"connecting.html#com");
    const HelpTopic unknown = helpTopic({{QStringLiteral("frmNew"), QStringLiteral("Combo1")}});
    EXPECT_EQ(unknown.page, u"index.html");
}

struct Told
{
    const char* name;
    const char* manual;
    const char* text;
    const char* id;
};

void PrintTo(const Told& told, std::ostream* out)
{
    *out << told.name;
}

class MessageTopic : public ::testing::TestWithParam<Told>
{};

TEST_P(MessageTopic, IsFoundByItsText)
{
    const Told& told = GetParam();
    const MessageTopics topics(
        read(QStringLiteral(VORLANT_DATA_DIR "/help/%1/messages.html").arg(QLatin1String(told.manual))));
    EXPECT_STREQ(qPrintable(topics.idOf(QString::fromUtf8(told.text))), told.id);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MessageTopic,
    ::testing::Values(Told{"Plain", "Vorlant", "Quit?", "quit"}, Told{"Japanese", "VorlantJ", "終了しますか？", "quit"},
                      Told{"WithMoreBehind", "Vorlant", "It is outside the setting range.[ 0 <= ( SV ) <= 1300 ]",
                           "it-is-outside-the-setting-range"},
                      Told{"TheLongerOfTwo", "Vorlant", "Transfer All Data.Sure?", "transfer-all-data-sure"},
                      Told{"TheShorterOfTwo", "Vorlant", "Transfer All Data.", "transfer-all-data"},
                      Told{"WithAName", "Vorlant", "/home/a/x.kx410 is too large for a parameter file.",
                           "is-too-large-for-a-parameter-file"},
                      Told{"Unknown", "Vorlant", "Nobody ever says this.", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(HelpFile, IsThatOfTheLanguage)
{
    EXPECT_EQ(platform::helpFile(QStringLiteral("C:\\Vorlant"), QStringLiteral("JP.txt")),
              u"C:\\Vorlant\\VorlantJ.chm");
    for (const char* other : {"EN.txt", "jp.txt", ""})
        EXPECT_EQ(platform::helpFile(QStringLiteral("C:\\Vorlant"), QLatin1String(other)), u"C:\\Vorlant\\Vorlant.chm");
}

TEST(HelpEdition, BearsTheNameOfTheHelpFile)
{
    platform::PathMap paths;
    paths.mount(u'C', QStringLiteral("/srv/kx"));
    const std::pair<const char16_t*, const char16_t*> rows[] = {
        {u"C:\\Vorlant\\Vorlant.chm", u"/srv/kx/Vorlant/help/Vorlant"},
        {u"C:\\Vorlant\\VorlantJ.chm", u"/srv/kx/Vorlant/help/VorlantJ"},
        {u"C:\\VorlantJ.chm", u"/srv/kx/help/VorlantJ"},
        {u"C:\\Vorlant\\", u""},
        {u"VorlantJ.chm", u""},
        {u"", u""},
    };
    for (const auto& [file, folder] : rows)
        EXPECT_EQ(platform::helpEdition(paths, QString::fromUtf16(file)), QString::fromUtf16(folder));
}

} // namespace
