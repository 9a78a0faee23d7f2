#include "WindowlessAnswer.h"

#include <gtest/gtest.h>

namespace {

TEST(WindowlessAnswer, IsForHelpAndForAMissingDisplay)
{
    const struct
    {
        QStringList arguments;
        bool hasDisplay;
        int exitStatus; // -1: the window opens
        const char* says;
    } rows[] = {
        {{}, true, -1, ""},
        {{"/D", "/M:KX41000000-10A"}, true, -1, ""},
        {{}, false, 1, "no display"},
        {{"-platform", "offscreen"}, false, -1, ""},
        {{"--help"}, false, 0, "Usage"},
        {{"--version"}, true, 0, "vorlant "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.arguments.join(u' ')));
        const auto answer = windowlessAnswer(row.arguments, row.hasDisplay);
        ASSERT_EQ(answer.has_value(), row.exitStatus >= 0);
        if (answer) {
            EXPECT_EQ(answer->exitStatus, row.exitStatus);
            EXPECT_TRUE(answer->text.contains(QLatin1String(row.says))) << qPrintable(answer->text);
        }
    }
}

} // namespace
