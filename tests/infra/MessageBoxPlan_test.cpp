#include "MessageBoxPlan.h"

#include "Table.h"
#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <gtest/gtest.h>

namespace {

TEST(Plan, FollowsTheStyle)
{
    for (const QStringList& row : tableRows("infra/message_plans.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        const MessageBoxPlan plan(row[1].toInt());
        QStringList buttons;
        for (const MessageButton& button : plan.buttons())
            buttons << button.caption + u' ' + QString::number(button.result);
        EXPECT_EQ(static_cast<int>(plan.icon()), row[2].toInt());
        EXPECT_EQ(buttons.join(u'|'), row[3]);
        EXPECT_EQ(plan.defaultIndex(), row[4].toInt());
        EXPECT_EQ(plan.escapeResult(), row[5].toInt());
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
