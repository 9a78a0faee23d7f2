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

// Byte values: Microsoft's table of code page 932.
TEST(JapaneseText, GoesBothWays)
{
    for (const Pair& row : {Pair{"Kanji", "\x90\xdd\x92\xe8", QStringLiteral("設定")},
                            Pair{"KanjiEndingInABackslash", "\x95\x5c\x8e\xa6", QStringLiteral("表示")},
                            Pair{"HalfWidthKana", "\xb1\xb2\xdf", QStringLiteral("ｱｲﾟ")},
                            Pair{"VendorCharacters", "\x87\x40\xfa\x55", QStringLiteral("①￤")},
                            Pair{"WaveDashAndMinus", "\x81\x60\x81\x7c", QStringLiteral("～－")},
                            Pair{"Nul", QByteArray("A\0B\0", 4), QString::fromLatin1("A\0B\0", 4)},
                            Pair{"OddOffsetMoreThanABuffer", "x" + QByteArray("\x90\xdd").repeated(5000),
                                 u'x' + QStringLiteral("設").repeated(5000)}}) {
        SCOPED_TRACE(row.name);
        const CodePage page;
        EXPECT_EQ(page.toText(row.bytes), row.text);
        EXPECT_EQ(page.fromText(row.text).toHex(), row.bytes.toHex());
    }
}

struct Damaged
{
    const char* name;
    QByteArray bytes;
    QString text;
};

TEST(DamagedText, KeepsEverythingElse)
{
    for (const Damaged& row : {Damaged{"HalfACharacterAtTheEnd", "A\x90", QStringLiteral("A\uFFFD")},
                               Damaged{"HalfACharacterBeforeNul", QByteArray("\x90\0B", 3),
                                       QStringLiteral("\uFFFD") + QString::fromLatin1("\0B", 2)},
                               Damaged{"OneForEachByte", "\x85\xff\x85\xff", QStringLiteral("\uFFFD").repeated(4)}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CodePage().toText(row.bytes), row.text);
    }
}

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

TEST(CodePage, EnvironmentNamesAnother)
{
    EXPECT_EQ(CodePage("NO-SUCH-PAGE").name(), "CP932") << "falls back";
    qputenv("VORLANT_CODEPAGE", "CP1252");
    const CodePage western = CodePage::fromEnvironment();
    qunsetenv("VORLANT_CODEPAGE");
    EXPECT_EQ(western.name(), "CP1252");
    EXPECT_EQ(western.toText("\x80"), u"€");
    EXPECT_EQ(western.fromText(QStringLiteral("設")), "?");
    EXPECT_EQ(CodePage::fromEnvironment().name(), "CP932");
}

} // namespace
