#include "StartArguments.h"

#include <gtest/gtest.h>

namespace {

TEST(StartArguments, NameAFileOrAreAnsweredWithoutAWindow)
{
    // Arguments, whether there is a display, exit status and what is said, or -1 and the file and what the detection
    // of the model is told.
    const std::tuple<QStringList, bool, int, const char*> rows[] = {
        {{}, true, -1, "|"},
        {{"/D", "/M:KX41000000-10A"}, true, -1, "|/D /M:KX41000000-10A"},
        {{"/Data/M:x/D/set.kx410", "--read-only"}, true, -1, "/Data/M:x/D/set.kx410|"},
        {{"/D/M:KX410", "--", "--odd.kx410"}, true, -1, "--odd.kx410|/D/M:KX410"},
        {{}, false, 1, "no display"},
        {{"set.kx410"}, false, 1, "no display"},
        {{"-platform", "offscreen", "-style=fusion", "-reverse", "a b"}, false, -1, "a b|"},
        {{"--help"}, false, 0, "Usage"},
        {{"-h"}, true, 0, "--read-only"},
        {{"--version"}, true, 0, "vorlant "},
        {{"-V", "a"}, false, 0, "vorlant "},
        {{"--bogus\x1b"}, false, 2, "Unknown option 'bogus\\x1b'. vorlant --help"},
        {{"--read-only=1"}, true, 2, "read-only"},
        {{"a", "b"}, true, 2, "\"b\" is too much"},
        {{""}, true, 2, "empty"},
    };
    for (const auto& [arguments, hasDisplay, exitStatus, says] : rows) {
        SCOPED_TRACE(qPrintable(arguments.join(u' ')));
        const StartArguments start = StartArguments::parse(arguments, hasDisplay);
        EXPECT_EQ(start.answer ? start.answer->exitStatus : -1, exitStatus);
        const QString text = start.answer ? start.answer->text : start.file + u'|' + start.detection;
        EXPECT_TRUE(start.answer ? text.contains(QLatin1String(says)) : text == QLatin1String(says))
            << qPrintable(text);
        EXPECT_TRUE(start.answer || start.isReadOnly == arguments.contains("--read-only"));
    }
}

} // namespace
