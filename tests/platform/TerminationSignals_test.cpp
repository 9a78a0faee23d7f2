#include "TerminationSignals.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <csignal>

namespace {

class Termination : public ::testing::TestWithParam<int>
{};

TEST_P(Termination, BecomesAnEvent)
{
    const platform::TerminationSignals endRequest;
    QSignalSpy requested(&endRequest, &platform::TerminationSignals::requested);
    std::raise(GetParam());
    EXPECT_EQ(requested.count(), 0) << "only from the event loop";
    EXPECT_TRUE(requested.wait());
    EXPECT_EQ(requested.count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Signals, Termination, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(TerminationDeath, FormerBehaviourComesBack)
{
    EXPECT_EXIT(
        {
            {
                const platform::TerminationSignals endRequest;
            }
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "");
}

} // namespace
