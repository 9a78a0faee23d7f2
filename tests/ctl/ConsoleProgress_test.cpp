#include "ConsoleProgress.h"

#include <gtest/gtest.h>

namespace {

TEST(ConsoleProgress, ShowsOneLineAndWipesIt)
{
    for (const bool isShown : {true, false}) {
        QString shown;
        QTextStream terminal(&shown);
        ConsoleProgress progress(terminal, isShown);
        progress.open(3, {}, "a\n b\x1b", false, true);
        progress.setPosition(2);
        progress.close();
        EXPECT_EQ(shown, isShown ? "\r\x1b[K0/3 a b\\x1b\r\x1b[K2/3 a b\\x1b\r\x1b[K" : "");
    }
}

} // namespace
