#include "SingleInstance.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using platform::SingleInstance;

namespace {

TEST(SingleInstance, SecondOfTheSamePlaceIsTold)
{
    const QTemporaryDir locks;
    const QString program = QCoreApplication::applicationFilePath();
    auto first = std::make_unique<SingleInstance>(program, locks.path());
    EXPECT_TRUE(first->isFirst());
    EXPECT_FALSE(SingleInstance(program, locks.path()).isFirst());
    EXPECT_TRUE(SingleInstance(QStringLiteral("/bin/sh"), locks.path()).isFirst()) << "another program";
    first.reset();
    EXPECT_TRUE(SingleInstance(program, locks.path()).isFirst());
}

TEST(SingleInstance, KilledCopyLeavesNoLock)
{
    const QTemporaryDir locks;
    const QString program = QCoreApplication::applicationFilePath();
    const pid_t child = fork();
    if (child == 0) {
        const SingleInstance other(program, locks.path());
        _exit(other.isFirst() ? 0 : 1); // without giving the lock back
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    EXPECT_TRUE(SingleInstance(program, locks.path()).isFirst());
}

} // namespace
