#include "HeadlessMessages.h"

#include <gtest/gtest.h>

namespace {

TEST(HeadlessMessages, AgreesToQuestionsAndEndsEverythingElse)
{
    struct Row
    {
        const char* name;
        int style;
        int answer;
    };
    HeadlessMessages messages;
    for (const Row& row : {Row{"yes or no", MessageStyle::kYesNoExclamation, MessageResult::kYes},
                           Row{"ok or cancel", MessageStyle::kOkCancel, MessageResult::kOk},
                           Row{"no endless repetition", MessageStyle::kRetryCancel, MessageResult::kCancel},
                           Row{"no endless repetition", MessageStyle::kAbortRetryIgnore, MessageResult::kAbort}}) {
        EXPECT_EQ(messages.showMessage(QStringLiteral("?"), row.style), row.answer) << row.name;
        EXPECT_EQ(messages.lastNotice(), QString()) << row.name;
    }
    EXPECT_EQ(messages.showMessage(QStringLiteral("Failed."), MessageStyle::kCritical), MessageResult::kOk);
    EXPECT_EQ(messages.lastNotice(), u"Failed.");
}

} // namespace
