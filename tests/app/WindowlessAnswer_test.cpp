#include "WindowlessAnswer.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowlessAnswer, IsForHelpAndForAMissingDisplay)
{
    // Arguments, whether there is a display, the exit status (-1: the window opens), and what is said.
    const std::tuple<QStringList, bool, int, const char*> rows[] = {
        {{}, true, -1, ""},
        {{"/D", "/M:KX41000000-10A"}, true, -1, ""},
        {{}, false, 1, "no display"},
        {{"-platform", "offscreen"}, false, -1, ""},
        {{"--help"}, false, 0, "Usage"},
        {{"--version"}, true, 0, "vorlant "},
    };
    for (const auto& [arguments, hasDisplay, exitStatus, says] : rows) {
        const auto answer = windowlessAnswer(arguments, hasDisplay);
        EXPECT_EQ(answer ? answer->exitStatus : -1, exitStatus) << qPrintable(arguments.join(u' '));
        EXPECT_TRUE(!answer || answer->text.contains(QLatin1String(says))) << qPrintable(answer->text);
    }
}

} // namespace
