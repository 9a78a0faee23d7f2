#include "CodePage.h"

#include <gtest/gtest.h>

using platform::CodePage;

namespace {

// Byte values: Microsoft's table of code page 932. A damaged text has no way back.
TEST(CodePage, JapaneseTextGoesBothWays)
{
    const struct
    {
        const char* name;
        QByteArray bytes;
        QString text;
        bool isDamaged = false;
    } rows[] = {
        {"kanji", "\x90\xdd\x92\xe8", QStringLiteral("設定")},
        {"kanji ending in a backslash", "\x95\x5c\x8e\xa6", QStringLiteral("表示")},
        {"half-width kana", "\xb1\xb2\xdf", QStringLiteral("ｱｲﾟ")},
        {"vendor characters", "\x87\x40\xfa\x55", QStringLiteral("①￤")},
        {"wave dash and minus", "\x81\x60\x81\x7c", QStringLiteral("～－")},
        {"NUL", QByteArray("A\0B\0", 4), QString::fromLatin1("A\0B\0", 4)},
        {"more than a buffer", 'x' + QByteArray("\x90\xdd").repeated(5000), u'x' + QStringLiteral("設").repeated(5000)},
        {"half a character", "A\x90", QStringLiteral("A\uFFFD"), true},
        {"half a character before NUL", QByteArray("\x90\0", 2), QStringLiteral("\uFFFD") + QChar(0), true},
        {"one for each byte", "\x85\xff\x85\xff", QStringLiteral("\uFFFD").repeated(4), true},
    };
    const CodePage page;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(page.toText(row.bytes), row.text);
        EXPECT_EQ(page.toText("A"), u"A") << "damage does not reach the next text";
        EXPECT_TRUE(row.isDamaged || page.fromText(row.text) == row.bytes);
    }
}

TEST(CodePage, WhatItLacksBecomesOneQuestionMark)
{
    const CodePage page;
    EXPECT_EQ(page.fromText(QStringLiteral("a\u20ACb")), "a?b");
    EXPECT_EQ(page.fromText(QStringLiteral("a😀b")), "a?b") << "two halves, one character";
    EXPECT_EQ(page.fromText(u'a' + QString(QChar(0xD83D))), "a?") << "half a character at the end";
    EXPECT_EQ(page.fromText(QStringLiteral("A")), "A") << "and the next text is not damaged";
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
