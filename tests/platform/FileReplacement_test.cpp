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

class Replacement : public ::testing::Test, protected ScratchFolder
{
protected:
    mode_t modeOf(const QString& name) const
    {
        struct stat info
        {};
        return lstat(encoded(name).constData(), &info) == 0 ? info.st_mode : 0;
    }
    std::string write(const QString& name, const QByteArray& bytes = "new") const
    {
        return platform::writeWholeFile(encoded(name), bytes).error().toStdString();
    }
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
    EXPECT_EQ(names(), QStringList{"a"});
    EXPECT_EQ(platform::writeWholeFile("/dev/full", "x").error(), u"No space left on device");
}

TEST_F(Replacement, OnlyWhatADeadSaveLeftIsRemoved)
{
    put(kLeftover, "of a killed save");
    put(kHeld, "of a running save");
    const int held = open(encoded(kHeld).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    for (const char* foreign :
         {".a.new", "a.123456", ".vorlant-save-", ".vorlant-save-0123456789abcdeg", ".vorlant-save-0123456789abcdef0"})
        put(foreign, "somebody's");
    ASSERT_EQ(symlink("a.123456", encoded(".vorlant-save-0123456789abcde1").constData()), 0);
    ASSERT_EQ(mkfifo(encoded(".vorlant-save-0123456789abcde2").constData(), 0600), 0);
    QStringList expected = names();
    expected.removeAll(kLeftover);
    EXPECT_EQ(write("~"), "");
    EXPECT_EQ(names(), expected << "~");
    close(held);
    EXPECT_EQ(write("~"), "");
    EXPECT_FALSE(names().contains(kHeld));
}

TEST_F(Replacement, RightsAreThoseOfTheUmaskOrOfTheOldFile)
{
    const mode_t before = umask(027);
    put("old", "");
    for (const auto& [mode, kept] : {std::pair(0604U, 0604U), {06755U, 0755U}, {0600U, 0600U}}) {
        chmod(encoded("old").constData(), mode);
        EXPECT_EQ(write("old"), "");
        EXPECT_EQ(modeOf("old") & 07777U, kept);
    }
    EXPECT_EQ(write("new"), "");
    EXPECT_EQ(modeOf("new") & 07777U, 0640U);
    umask(before);
}

TEST_F(Replacement, OnlyRegularFilesAreReplaced)
{
    put("folder/x", "x");
    EXPECT_EQ(write("folder"), "it is a folder");
    ASSERT_EQ(mkfifo(encoded("pipe").constData(), 0600), 0);
    EXPECT_EQ(platform::LockedFolder::lock(encoded()).value().replace(encoded("pipe"), "x").error(),
              u"it is not a regular file");
    const int reader = open(encoded("pipe").constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(write("pipe", "through"), "") << "a pipe that was named takes the bytes";
    char bytes[7];
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 7);
    close(reader);
}

TEST_F(Replacement, LinkIsFollowedUnlessAnotherUserPutItIntoASharedFolder)
{
    put("mine", "old");
    ASSERT_EQ(symlink("mine", encoded("link").constData()), 0);
    EXPECT_EQ(write("link"), "");
    EXPECT_EQ(content("mine"), "new");
    EXPECT_TRUE(S_ISLNK(modeOf("link")));
    if (geteuid() != 0)
        return;
    ASSERT_EQ(lchown(encoded("link").constData(), kOtherUser, kOtherUser), 0);
    ASSERT_EQ(chmod(encoded().constData(), 01777), 0);
    EXPECT_EQ(write("link", "overwritten"), "it is a link of another user");
    ASSERT_EQ(mkfifo(encoded("pipe").constData(), 0666), 0);
    ASSERT_EQ(chown(encoded("pipe").constData(), kOtherUser, kOtherUser), 0);
    EXPECT_EQ(write("pipe"), "it is a pipe or device of another user") << "it would wait for a reader";
    EXPECT_EQ(content("mine"), "new");
}

} // namespace
