#include "CodePage.h"

#include <gtest/gtest.h>

using platform::CodePage;

namespace {

struct Pair
{
    const char* name;
    QByteArray bytes;
    QString text;
};

class JapaneseText : public ::testing::TestWithParam<Pair>
{};

// Byte values: Microsoft's table of code page 932.
TEST_P(JapaneseText, GoesBothWays)
{
    const CodePage page;
    EXPECT_EQ(page.toText(GetParam().bytes), GetParam().text);
    EXPECT_EQ(page.fromText(GetParam().text).toHex(), GetParam().bytes.toHex());
}

INSTANTIATE_TEST_SUITE_P(CP932, JapaneseText,
                         ::testing::Values(Pair{"Empty", "", QString()},
                                           Pair{"Ascii", "KX410 ~\\|", QStringLiteral("KX410 ~\\|")},
                                           Pair{"Kanji", "\x90\xdd\x92\xe8", QStringLiteral("設定")},
                                           Pair{"KanjiEndingInABackslash", "\x95\x5c\x8e\xa6", QStringLiteral("表示")},
                                           Pair{"KanjiEndingInABar", "\x83\x7c", QStringLiteral("ポ")},
                                           Pair{"HalfWidthKana", "\xb1\xb2\xdf", QStringLiteral("ｱｲﾟ")},
                                           Pair{"VendorCharacters", "\x87\x40\xfa\x55", QStringLiteral("①￤")},
                                           Pair{"WaveDashAndMinus", "\x81\x60\x81\x7c", QStringLiteral("～－")},
                                           Pair{"UserDefined", "\xf0\x40", QString(QChar(0xE000))},
                                           Pair{"Nul", QByteArray("A\0B\0", 4), QString::fromLatin1("A\0B\0", 4)},
                                           Pair{"MoreThanABuffer", QByteArray("\x90\xdd").repeated(5000),
                                                QStringLiteral("設").repeated(5000)},
                                           Pair{"OddOffsetMoreThanABuffer", "x" + QByteArray("\x90\xdd").repeated(5000),
                                                u'x' + QStringLiteral("設").repeated(5000)}),
                         [](const auto& row) { return std::string(row.param.name); });

struct Damaged
{
    const char* name;
    QByteArray bytes;
    QString text;
};

class DamagedText : public ::testing::TestWithParam<Damaged>
{};

TEST_P(DamagedText, KeepsEverythingElse)
{
    EXPECT_EQ(CodePage().toText(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    CP932, DamagedText,
    ::testing::Values(Damaged{"HalfACharacterAtTheEnd", "A\x90", QStringLiteral("A\uFFFD")},
                      Damaged{"HalfACharacterBeforeALineEnd", "\x90\r\nB", QStringLiteral("\uFFFD\r\nB")},
                      Damaged{"HalfACharacterBeforeNul", QByteArray("\x90\0B", 3),
                              QStringLiteral("\uFFFD") + QString::fromLatin1("\0B", 2)},
                      Damaged{"BadSecondByte", "\x90\x20", QStringLiteral("\uFFFD ")},
                      Damaged{"OneForEachByte", "\x85\xff\x85\xff", QStringLiteral("\uFFFD").repeated(4)}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CodePage, WhatItLacksBecomesOneQuestionMark)
{
    const CodePage page;
    EXPECT_EQ(page.fromText(QStringLiteral("a\u20ACb")), "a?b");
    EXPECT_EQ(page.fromText(QStringLiteral("a😀b")), "a?b") << "two halves, one character";
    EXPECT_EQ(page.fromText(u'a' + QString(QChar(0xD83D))), "a?") << "half a character at the end";
}

TEST(CodePage, DamageDoesNotReachTheNextText)
{
    const CodePage page;
    page.toText("\x90");
    EXPECT_EQ(page.toText("A"), u"A");
    page.fromText(QString(QChar(0xD83D)));
    EXPECT_EQ(page.fromText(QStringLiteral("A")), "A");
}

TEST(CodePage, UnknownNameFallsBack)
{
    for (const char* name : {"NO-SUCH-PAGE", ""}) {
        const CodePage page(name);
        EXPECT_EQ(page.toText("\x90\xdd"), u"設") << name;
    }
    EXPECT_EQ(CodePage("NO-SUCH-PAGE").name(), "CP932");
}

TEST(CodePage, EnvironmentNamesAnother)
{
    qputenv("VORLANT_CODEPAGE", "CP1252");
    const CodePage western = CodePage::fromEnvironment();
    qunsetenv("VORLANT_CODEPAGE");
    EXPECT_EQ(western.name(), "CP1252");
    EXPECT_EQ(western.toText("\x80"), u"€");
    EXPECT_EQ(western.fromText(QStringLiteral("設")), "?");
    EXPECT_EQ(CodePage::fromEnvironment().name(), "CP932");
}

TEST(CodePage, TextsOfAShiftedPageStandBehindEachOther)
{
    const CodePage page("ISO-2022-JP");
    const QByteArray bytes = page.fromText(QStringLiteral("設")) + "=1";
    EXPECT_EQ(page.toText(bytes), u"設=1");
}

} // namespace
