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
        const MessageBoxPlan plan(row[1].toInt());
        QStringList buttons;
        for (const MessageButton& button : plan.buttons())
            buttons << button.caption + ' ' + QString::number(button.result);
        const QString planned = QString("%1\t%2\t%3\t%4")
                                    .arg(static_cast<int>(plan.icon()))
                                    .arg(buttons.join('|'))
                                    .arg(plan.defaultIndex())
                                    .arg(plan.escapeResult());
        EXPECT_EQ(planned, row.mid(2).join('\t')) << qPrintable(row[0]);
    }
}

TEST(ShowMessage, WithoutAPresenterIsLoggedAndTakesTheDefault)
{
    TestMachine box;
    clsLog log(box.machine);
    log.setLogFileName("Err.log");
    box.context.errorLog = log;
    EXPECT_EQ(clsLibrary(box.context).showMessage("Nobody reads this", 4 + 256), MessageResult::kNo);
    EXPECT_TRUE(box.content("C:\\Vorlant\\Err.log").contains("[LibraryError]showMessage: Nobody reads this"));
}

} // namespace
