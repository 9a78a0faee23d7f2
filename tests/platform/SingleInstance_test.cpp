#include "SingleInstance.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
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
    const SingleInstance second(program, locks.path());
    EXPECT_FALSE(second.isFirst());
    EXPECT_EQ(second.holder(), QString::number(getpid()));
    EXPECT_EQ(second.lockFile(), first->lockFile());
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

// Another user's, a pipe (to open it would hang), a link to a file that must not be emptied.
TEST(SingleInstance, ForeignLockFileStopsNobody)
{
    const QTemporaryDir locks;
    const QString program = QCoreApplication::applicationFilePath();
    const QByteArray file = QFile::encodeName(SingleInstance(program, locks.path()).lockFile());
    const QByteArray kept = QFile::encodeName(locks.filePath(QStringLiteral("kept")));
    ASSERT_EQ(mkfifo(file.constData(), 0600), 0);
    EXPECT_TRUE(SingleInstance(program, locks.path()).isFirst());
    ASSERT_EQ(unlink(file.constData()), 0);
    QFile content(QFile::decodeName(kept));
    ASSERT_TRUE(content.open(QIODevice::ReadWrite) && content.write("good") == 4 && content.flush());
    ASSERT_EQ(symlink(kept.constData(), file.constData()), 0);
    EXPECT_TRUE(SingleInstance(program, locks.path()).isFirst());
    EXPECT_EQ(content.size(), 4);
    if (geteuid() != 0)
        return;
    ASSERT_EQ(rename(kept.constData(), file.constData()), 0);
    ASSERT_EQ(chown(file.constData(), 65534, 65534), 0);
    const int held = open(file.constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    EXPECT_TRUE(SingleInstance(program, locks.path()).isFirst());
    close(held);
}

} // namespace
