#include "CodePage.h"

#include <gtest/gtest.h>

using platform::CodePage;

namespace {

// Byte values: Microsoft's table of code page 932. A damaged text has no way back.
TEST(CodePage, JapaneseTextGoesBothWays)
{
    const std::tuple<const char*, QByteArray, QString, bool> rows[] = {
        {"kanji", "\x90\xdd\x92\xe8", "設定", false},
        {"kanji ending in a backslash", "\x95\x5c\x8e\xa6", "表示", false},
        {"half-width kana", "\xb1\xb2\xdf", "ｱｲﾟ", false},
        {"vendor characters", "\x87\x40\xfa\x55", "①￤", false},
        {"wave dash and minus", "\x81\x60\x81\x7c", "～－", false},
        {"NUL", QByteArray("A\0B\0", 4), QString::fromLatin1("A\0B\0", 4), false},
        {"more than a buffer", 'x' + QByteArray("\x90\xdd").repeated(5000), 'x' + QString("設").repeated(5000), false},
        {"half a character", "A\x90", "A\uFFFD", true},
        {"half a character before NUL", QByteArray("\x90\0", 2), QString("\uFFFD") + QChar(0), true},
        {"one for each byte", "\x85\xff\x85\xff", "\uFFFD\uFFFD\uFFFD\uFFFD", true},
    };
    const CodePage page;
    for (const auto& [name, bytes, text, isDamaged] : rows) {
        EXPECT_EQ(page.toText(bytes), text) << name;
        EXPECT_EQ(page.toText("A"), u"A") << name << ": damage does not reach the next text";
        EXPECT_TRUE(isDamaged || page.fromText(text) == bytes) << name;
    }
}

TEST(CodePage, WhatItLacksBecomesOneQuestionMark)
{
    const CodePage page;
    EXPECT_EQ(page.fromText("a\u20ACb"), "a?b");
    EXPECT_EQ(page.fromText("a😀b"), "a?b") << "two halves, one character";
    EXPECT_EQ(page.fromText('a' + QString(QChar(0xD83D))), "a?") << "half a character at the end";
    EXPECT_EQ(page.fromText("A"), "A") << "and the next text is not damaged";
}

TEST(CodePage, EnvironmentNamesAnother)
{
    EXPECT_EQ(CodePage("NO-SUCH-PAGE").name(), "CP932") << "falls back";
    qputenv("VORLANT_CODEPAGE", "CP1252");
    const CodePage western = CodePage::fromEnvironment();
    qunsetenv("VORLANT_CODEPAGE");
    EXPECT_EQ(western.name(), "CP1252");
    EXPECT_EQ(western.toText("\x80"), u"€");
    EXPECT_EQ(western.fromText("設"), "?");
    EXPECT_EQ(CodePage::fromEnvironment().name(), "CP932");
}

} // namespace
