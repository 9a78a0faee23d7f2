#include "FileReplacement.h"

#include "ChildProcess.h"
#include "LockedFolder.h"
#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

constexpr char kLeftover[] = ".vorlant-save-0123456789abcdef";
constexpr char kHeld[] = ".vorlant-save-0123456789abcde0";

class Replacement : public ::testing::Test
{
protected:
    QByteArray path(const QByteArray& name) const { return box.encoded(QFile::decodeName(name)); }
    void put(const QByteArray& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(box.put(QFile::decodeName(name), bytes));
    }
    QByteArray content(const char* name) const { return box.content(QLatin1String(name)); }
    mode_t modeOf(const QByteArray& name) const
    {
        struct stat info
        {};
        return stat(path(name).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
    }
    std::string write(const QByteArray& name, const QByteArray& bytes = "new") const
    {
        return platform::writeWholeFile(path(name), bytes).error().toStdString();
    }

    ScratchFolder box;
};

TEST_F(Replacement, DiskThatIsFullIsReportedAndTheOldFileStays)
{
    put("a", "old");
    EXPECT_TRUE(trueInChild([this] {
        const rlimit limit{4096, 4096};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        return write("a", QByteArray(4097, 'x')) == "File too large";
    }));
    EXPECT_EQ(content("a"), "old");
    EXPECT_EQ(box.names(), QStringList{QStringLiteral("a")});
    EXPECT_EQ(platform::writeWholeFile("/dev/full", "x").error().toStdString(), "No space left on device");
}

TEST_F(Replacement, OnlyWhatADeadSaveLeftIsRemoved)
{
    put(kLeftover, "of a killed save");
    put(kHeld, "of a running save");
    const int held = open(path(kHeld).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    const QByteArray foreign[] = {".a.new", "a.123456", ".vorlant-save-", ".vorlant-save-0123456789abcdeg",
                                  ".vorlant-save-0123456789abcdef0"};
    for (const QByteArray& name : foreign)
        put(name, "somebody's");
    ASSERT_EQ(symlink("a.123456", path(".vorlant-save-0123456789abcde1").constData()), 0);
    ASSERT_EQ(mkfifo(path(".vorlant-save-0123456789abcde2").constData(), 0600), 0);
    QStringList expected = box.names();
    expected.removeAll(QString::fromLatin1(kLeftover));
    EXPECT_EQ(write("~"), "");
    EXPECT_EQ(box.names(), expected << QStringLiteral("~"));
    close(held);
    EXPECT_EQ(write("~"), "");
    EXPECT_FALSE(box.names().contains(QString::fromLatin1(kHeld)));
}

TEST_F(Replacement, RightsAreThoseOfTheUmaskOrOfTheOldFile)
{
    const mode_t before = umask(027);
    put("old", "");
    const struct
    {
        mode_t mode;
        mode_t kept;
    } rows[] = {{0604, 0604}, {06755, 0755}, {0600, 0600}};
    for (const auto& row : rows) {
        chmod(path("old").constData(), row.mode);
        EXPECT_EQ(write("old"), "");
        EXPECT_EQ(modeOf("old"), row.kept);
    }
    EXPECT_EQ(write("new"), "");
    EXPECT_EQ(modeOf("new"), 0640U);
    umask(before);
}

TEST_F(Replacement, OnlyRegularFilesAreReplaced)
{
    put("folder/x", "x");
    EXPECT_EQ(write("folder"), "it is a folder");
    ASSERT_EQ(mkfifo(path("pipe").constData(), 0600), 0);
    EXPECT_EQ(platform::LockedFolder::lock(box.encoded()).value().replace(path("pipe"), "x").error(),
              u"it is not a regular file");
    const int reader = open(path("pipe").constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(write("pipe", "through"), "") << "a pipe that was named takes the bytes";
    char bytes[7];
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 7);
    close(reader);
}

TEST_F(Replacement, LinkIsFollowedUnlessAnotherUserPutItIntoASharedFolder)
{
    put("mine", "old");
    ASSERT_EQ(symlink("mine", path("link").constData()), 0);
    EXPECT_EQ(write("link"), "");
    EXPECT_EQ(content("mine"), "new");
    struct stat info
    {};
    ASSERT_EQ(lstat(path("link").constData(), &info), 0);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    if (geteuid() != 0)
        return;
    ASSERT_EQ(lchown(path("link").constData(), kOtherUser, kOtherUser), 0);
    ASSERT_EQ(chmod(box.encoded().constData(), 01777), 0);
    EXPECT_EQ(write("link", "overwritten"), "it is a link of another user");
    ASSERT_EQ(mkfifo(path("pipe").constData(), 0666), 0);
    ASSERT_EQ(chown(path("pipe").constData(), kOtherUser, kOtherUser), 0);
    EXPECT_EQ(write("pipe"), "it is a pipe or device of another user") << "it would wait for a reader";
    EXPECT_EQ(content("mine"), "new");
}

} // namespace
