#include "TerminationSignals.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace {

TEST(Termination, BecomesAnEventWhileTheObjectLives)
{
    auto ending = std::make_unique<platform::TerminationSignals>();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        QSignalSpy requested(ending.get(), &platform::TerminationSignals::requested);
        std::raise(signal);
        EXPECT_EQ(requested.count(), 0) << "only from the event loop";
        EXPECT_TRUE(requested.wait());
        EXPECT_EQ(requested.count(), 1);
    }
    ending.reset();
    EXPECT_EXIT(std::raise(SIGTERM), ::testing::KilledBySignal(SIGTERM), "");
}

} // namespace
