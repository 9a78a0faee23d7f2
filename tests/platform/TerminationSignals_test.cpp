#include "TerminationSignals.h"

#include "ChildProcess.h"

#include <QProcess>
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

// The inner process holds the other end of the pipe for as long as it lives.
TEST(Termination, AProcessEndsWithTheOneThatStartedIt)
{
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    ASSERT_TRUE(trueInChild([] {
        auto* process = new QProcess; // nobody stops what it started
        platform::endWithThisProcess(*process);
        process->start("/bin/sleep", {"1000"});
        return process->waitForStarted();
    }));
    close(pipeEnds[1]);
    char byte = 0;
    EXPECT_EQ(read(pipeEnds[0], &byte, 1), 0);
    close(pipeEnds[0]);
}

} // namespace
