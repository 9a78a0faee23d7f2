#include "NamedPipe.h"

#include "ScratchFolder.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

class Pipe : public ::testing::Test
{
protected:
    // As a program that comes, writes and goes.
    void write(const QByteArray& bytes) const
    {
        const int fd = ::open(folder.encoded("pipe").constData(), O_WRONLY | O_NONBLOCK);
        ASSERT_GE(fd, 0);
        EXPECT_EQ(::write(fd, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
        ::close(fd);
    }

    ScratchFolder folder;
    std::unique_ptr<platform::NamedPipe> pipe = std::make_unique<platform::NamedPipe>();
};

TEST_F(Pipe, LinesOfAnyWriterArriveWhole)
{
    ASSERT_EQ(pipe->open(folder.path("pipe")).error(), QString());
    QSignalSpy received(pipe.get(), &platform::NamedPipe::received);
    const QByteArray tooLong(platform::NamedPipe::kMaxLine + 500, 'x');
    for (const QByteArray& bytes : {QByteArray("one\ntw"), QByteArray("o\n\n"), tooLong + "\nend\n"})
        write(bytes);
    while (received.count() < 4)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QStringList lines;
    for (const QVariantList& line : received)
        lines << line.at(0).toString();
    EXPECT_EQ(lines, (QStringList{"one", "two", QString(platform::NamedPipe::kMaxLine, 'x'), "end"}));
    pipe.reset();
    EXPECT_EQ(folder.names(), QStringList());
}

TEST_F(Pipe, WhatIsThereStays)
{
    ASSERT_TRUE(folder.put("pipe", "data"));
    EXPECT_FALSE(pipe->open(folder.path("pipe")).ok());
    EXPECT_FALSE(platform::NamedPipe().open(folder.path("none/pipe")).ok());
    pipe.reset();
    EXPECT_EQ(folder.content("pipe"), "data");
    pipe = std::make_unique<platform::NamedPipe>();
    ASSERT_TRUE(pipe->open(folder.path("own")).ok());
    ASSERT_TRUE(QFile::remove(folder.path("own")) && folder.put("own", "another's"));
    pipe.reset();
    EXPECT_EQ(folder.content("own"), "another's");
}

} // namespace
