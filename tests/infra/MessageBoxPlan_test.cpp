#include "MessageBoxPlan.h"

#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

struct PlanRow
{
    const char* name;
    int style;
    MessageIcon icon;
    QStringList captions;
    QList<int> results;
    int defaultIndex;
    int escapeResult;
};

class Plan : public ::testing::TestWithParam<PlanRow>
{};

TEST_P(Plan, FollowsTheStyle)
{
    const PlanRow& row = GetParam();
    const MessageBoxPlan plan(row.style);
    QStringList captions;
    QList<int> results;
    for (const MessageButton& button : plan.buttons()) {
        captions << button.caption;
        results << button.result;
    }
    EXPECT_EQ(plan.icon(), row.icon);
    EXPECT_EQ(captions, row.captions);
    EXPECT_EQ(results, row.results);
    EXPECT_EQ(plan.defaultIndex(), row.defaultIndex);
    EXPECT_EQ(plan.escapeResult(), row.escapeResult);
}

const QStringList kOk = {QStringLiteral("OK")};
const QStringList kYesNo = {QStringLiteral("Yes"), QStringLiteral("No")};
const QStringList kYesNoCancel = {QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("Cancel")};

INSTANTIATE_TEST_SUITE_P(
    Styles, Plan,
    ::testing::Values(
        PlanRow{"Plain", 0, MessageIcon::None, kOk, {1}, 0, 1},
        PlanRow{"OkCancel", 1, MessageIcon::None, {QStringLiteral("OK"), QStringLiteral("Cancel")}, {1, 2}, 0, 2},
        PlanRow{"StopRetryDisregard",
                2,
                MessageIcon::None,
                {QStringLiteral("Stop"), QStringLiteral("Retrial"), QStringLiteral("Disregard")},
                {3, 4, 5},
                0,
                3},
        PlanRow{
            "RetryCancel", 5, MessageIcon::None, {QStringLiteral("Retrial"), QStringLiteral("Cancel")}, {4, 2}, 0, 2},
        PlanRow{"QuestionNoIsDefault", 4 + 32 + 256, MessageIcon::Question, kYesNo, {6, 7}, 1, 7},
        PlanRow{"ThirdIsDefault", 3 + 48 + 512, MessageIcon::Exclamation, kYesNoCancel, {6, 7, 2}, 2, 2},
        PlanRow{"ThirdBeforeSecond", 3 + 256 + 512, MessageIcon::None, kYesNoCancel, {6, 7, 2}, 2, 2},
        PlanRow{"DefaultThatIsNotThere", 4 + 512, MessageIcon::None, kYesNo, {6, 7}, 0, 7},
        PlanRow{"Stop", 16, MessageIcon::Stop, kOk, {1}, 0, 1},
        PlanRow{"Information", 64, MessageIcon::Information, kOk, {1}, 0, 1},
        PlanRow{"InformationBeforeStop", 64 + 16, MessageIcon::Information, kYesNo, {6, 7}, 0, 7},
        PlanRow{"SetsRepeatEverySix", 6 + 3, MessageIcon::None, kYesNoCancel, {6, 7, 2}, 0, 2},
        PlanRow{"Negative", -1 & ~(64 + 256 + 512), MessageIcon::Exclamation, kOk, {1}, 0, 1}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MessageText, BreaksItsLines)
{
    struct Row
    {
        const char* prompt;
        const char* shown;
    };
    for (const Row& row : {Row{"one.vbCrLftwo.", "one.\ntwo."}, Row{"vbCrLf", "\n"}, Row{"a\r\nb", "a\nb"},
                           Row{"vbcrlf stays", "vbcrlf stays"}})
        EXPECT_EQ(MessageBoxPlan::shownText(QLatin1String(row.prompt)), QLatin1String(row.shown));
}

TEST(ShowMessage, WithoutAPresenterIsLoggedAndTakesTheDefault)
{
    TestMachine box;
    clsLog log(box.machine);
    log.setLogFileName(QStringLiteral("Err.log"));
    box.context.errorLog = &log;
    const clsLibrary library(box.context);
    EXPECT_EQ(library.showMessage(QStringLiteral("Nobody reads this"), 4 + 256), MessageResult::kNo);
    QFile file(box.path(QStringLiteral("C:\\Vorlant\\Err.log")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("[LibraryError]showMessage: Nobody reads this"));
}

TEST(ShowMessage, GoesToTheContextsPresenter)
{
    struct Presenter : MessagePresenter
    {
        int present(const Message& message) override
        {
            got = message;
            return MessageResult::kRetry;
        }
        Message got;
    } presenter;
    TestMachine box;
    box.context.messages = &presenter;
    const clsLibrary library(box.context);
    EXPECT_EQ(library.showMessage(QStringLiteral("Again?"), 5, QStringLiteral("Line"), 3), MessageResult::kRetry);
    EXPECT_EQ(presenter.got.prompt, u"Again?");
    EXPECT_EQ(presenter.got.style, 5);
    EXPECT_EQ(presenter.got.title, u"Line");
    EXPECT_EQ(presenter.got.timerSeconds, 3);
}

} // namespace
