#include "Faults.h"

#include <gtest/gtest.h>

namespace {

struct FaultText
{
    const char* text;
    bool valid;
};

class FaultTexts : public ::testing::TestWithParam<FaultText>
{};

TEST_P(FaultTexts, AreTakenOrExplained)
{
    Faults faults(1);
    QString error;
    EXPECT_EQ(faults.add(QString::fromLatin1(GetParam().text), error), GetParam().valid);
    EXPECT_EQ(error.isEmpty(), GetParam().valid) << qPrintable(error);
}

INSTANTIATE_TEST_SUITE_P(Texts, FaultTexts,
                         ::testing::Values(FaultText{"silent", true}, FaultText{"corrupt@0.5", true},
                                           FaultText{"truncate@every3", true}, FaultText{"exception:2@every1", true},
                                           FaultText{"exception", false}, FaultText{"exception:0", false},
                                           FaultText{"exception:256", false}, FaultText{"silent:1", false},
                                           FaultText{"silent@1.5", false}, FaultText{"silent@", false},
                                           FaultText{"silent@every0", false}, FaultText{"silent@everyx", false},
                                           FaultText{"unheard", false}, FaultText{"", false}));

QByteArray pattern(const char* text, unsigned seed)
{
    Faults faults(seed);
    QString error;
    faults.add(QString::fromLatin1(text), error);
    QByteArray result;
    for (int i = 0; i < 12; ++i)
        result += faults.next().silent ? 'x' : '.';
    return result;
}

TEST(Faults, StrikeEveryNthReply)
{
    EXPECT_EQ(pattern("silent@every3", 1), "..x..x..x..x");
    EXPECT_EQ(pattern("silent", 1), "xxxxxxxxxxxx");
    EXPECT_EQ(pattern("silent@0", 1), "............");
}

TEST(Faults, RepeatWithTheSameSeed)
{
    EXPECT_EQ(pattern("silent@0.5", 7), pattern("silent@0.5", 7));
    EXPECT_NE(pattern("silent@0.5", 7), pattern("silent@0.5", 8));
}

TEST(Faults, DamageAReply)
{
    Faults faults(3);
    const QByteArray reply = "0123456789";
    Faults::Verdict verdict;
    EXPECT_EQ(faults.damaged(reply, verdict), reply);
    verdict.corrupt = true;
    const QByteArray corrupted = faults.damaged(reply, verdict);
    int differences = 0;
    ASSERT_EQ(corrupted.size(), reply.size());
    for (qsizetype i = 0; i < reply.size(); ++i)
        differences += corrupted[i] == reply[i] ? 0 : 1;
    EXPECT_EQ(differences, 1);
    verdict = {};
    verdict.truncate = true;
    EXPECT_EQ(faults.damaged(reply, verdict), "01234");
    verdict.silent = true;
    EXPECT_EQ(faults.damaged(reply, verdict), QByteArray());
}

} // namespace
