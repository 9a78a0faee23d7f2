#include "MessageBoxPlan.h"

#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <gtest/gtest.h>

namespace {

TEST(Plan, FollowsTheStyle)
{
    using Icon = MessageIcon;
    const struct
    {
        const char* name;
        int style;
        Icon icon;
        const char* buttons; // caption and code
        int defaultIndex;
        int escapeResult;
    } rows[] = {
        {"plain", 0, Icon::None, "OK 1", 0, 1},
        {"OK, Cancel", 1, Icon::None, "OK 1|Cancel 2", 0, 2},
        {"stop, retry, disregard", 2 + 16, Icon::Stop, "Stop 3|Retrial 4|Disregard 5", 0, 3},
        {"retry, cancel", 5, Icon::None, "Retrial 4|Cancel 2", 0, 2},
        {"No is the default", 4 + 32 + 256, Icon::Question, "Yes 6|No 7", 1, 7},
        {"third before second", 3 + 48 + 256 + 512, Icon::Exclamation, "Yes 6|No 7|Cancel 2", 2, 2},
        {"default that is not there", 4 + 512, Icon::None, "Yes 6|No 7", 0, 7},
        {"information before stop", 64 + 16, Icon::Information, "Yes 6|No 7", 0, 7},
        {"sets repeat every six", 6 + 3, Icon::None, "Yes 6|No 7|Cancel 2", 0, 2},
        {"negative", -1 & ~(64 + 256 + 512), Icon::Exclamation, "OK 1", 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const MessageBoxPlan plan(row.style);
        QStringList buttons;
        for (const MessageButton& button : plan.buttons())
            buttons << button.caption + u' ' + QString::number(button.result);
        EXPECT_EQ(plan.icon(), row.icon);
        EXPECT_EQ(buttons.join(u'|').toStdString(), row.buttons);
        EXPECT_EQ(plan.defaultIndex(), row.defaultIndex);
        EXPECT_EQ(plan.escapeResult(), row.escapeResult);
    }
}

TEST(ShowMessage, WithoutAPresenterIsLoggedAndTakesTheDefault)
{
    TestMachine box;
    clsLog log(box.machine);
    log.setLogFileName(QStringLiteral("Err.log"));
    box.context.errorLog = log;
    const clsLibrary library(box.context);
    EXPECT_EQ(library.showMessage(QStringLiteral("Nobody reads this"), 4 + 256), MessageResult::kNo);
    EXPECT_TRUE(
        box.content(QStringLiteral("C:\\Vorlant\\Err.log")).contains("[LibraryError]showMessage: Nobody reads this"));
}

} // namespace
