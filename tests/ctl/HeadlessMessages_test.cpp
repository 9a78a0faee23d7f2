#include "HeadlessMessages.h"

#include <gtest/gtest.h>

namespace {

TEST(HeadlessMessages, AgreesToQuestionsAndEndsEverythingElse)
{
    HeadlessMessages messages;
    const std::pair<int, int> rows[] = {
        {MessageStyle::kYesNoExclamation, MessageResult::kYes},
        {MessageStyle::kOkCancel, MessageResult::kOk},
        {MessageStyle::kRetryCancel, MessageResult::kCancel}, // no endless repetition
        {MessageStyle::kAbortRetryIgnore, MessageResult::kAbort},
    };
    for (const auto& [style, answer] : rows)
        EXPECT_EQ(messages.showMessage("?", style), answer) << style;
    EXPECT_EQ(messages.lastNotice(), QString());
    EXPECT_EQ(messages.showMessage("Failed.", MessageStyle::kCritical), MessageResult::kOk);
    EXPECT_EQ(messages.lastNotice(), u"Failed.");
}

} // namespace
