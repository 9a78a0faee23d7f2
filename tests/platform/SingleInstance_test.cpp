#include "SingleInstance.h"

#include "ChildProcess.h"
#include "InstanceChannel.h"
#include "ScratchFolder.h"

#include <QCoreApplication>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using platform::InstanceChannel;
using platform::SingleInstance;

namespace {

class Instance : public ::testing::Test, protected ScratchFolder
{
protected:
    bool isFirst() const { return SingleInstance(program, path()).isFirst(); }

    QString program = QCoreApplication::applicationFilePath();
};

TEST_F(Instance, SecondOfTheSamePlaceIsRefused)
{
    std::optional<SingleInstance> first(std::in_place, program, path());
    EXPECT_TRUE(first->isFirst());
    const SingleInstance second(program, path());
    EXPECT_FALSE(second.isFirst());
    EXPECT_EQ(second.holder(), QString::number(getpid()));
    EXPECT_EQ(second.lockFile(), first->lockFile());
    EXPECT_TRUE(SingleInstance("/bin/sh", path()).isFirst()) << "another program";
    first.reset();
    EXPECT_TRUE(isFirst());
}

// Another user's, a pipe (to open it would hang), a link to a file that must not be emptied.
TEST_F(Instance, ForeignLockFileStopsNobody)
{
    const QByteArray file = QFile::encodeName(SingleInstance(program, path()).lockFile());
    ASSERT_EQ(mkfifo(file.constData(), 0600), 0);
    EXPECT_TRUE(isFirst());
    ASSERT_EQ(unlink(file.constData()), 0);
    ASSERT_TRUE(put("kept", "good"));
    ASSERT_EQ(symlink(encoded("kept").constData(), file.constData()), 0);
    EXPECT_TRUE(isFirst());
    EXPECT_EQ(content("kept"), "good");
    if (geteuid() != 0)
        return;
    ASSERT_EQ(rename(encoded("kept").constData(), file.constData()), 0);
    ASSERT_EQ(chown(file.constData(), kOtherUser, kOtherUser), 0);
    const int held = open(file.constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    EXPECT_TRUE(isFirst());
    close(held);
}

// Words come over whole to the first one; a socket that is left, foreign or silent takes none.
TEST_F(Instance, LaterStartSpeaksToTheFirst)
{
    const SingleInstance first(program, path());
    const QString socket = first.socketFile(":0");
    EXPECT_NE(socket, first.socketFile(":1"));
    const QStringList words{"/tmp/a b\n日本.kx410", QString()};
    EXPECT_FALSE(InstanceChannel::send(socket, words)) << "nobody listens";
    QLocalServer left;
    ASSERT_TRUE(left.listen(socket));
    EXPECT_FALSE(InstanceChannel::send(socket, words, 1)) << "nobody answers";
    InstanceChannel channel;
    ASSERT_TRUE(channel.listen(socket));
    const QSignalSpy received(&channel, &InstanceChannel::received);
    QLocalSocket half;
    half.connectToServer(socket);
    half.write("\0\0\0\1\xff\xff\xff", 7);
    half.disconnectFromServer();
    bool wasTaken = false;
    const std::unique_ptr<QThread> later(QThread::create([&] { wasTaken = InstanceChannel::send(socket, words); }));
    later->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return later->isFinished(); }));
    EXPECT_TRUE(wasTaken);
    ASSERT_EQ(received.count(), 1);
    EXPECT_EQ(received.first().first().toStringList(), words);
}

} // namespace
