#include "ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <tuple>
#include <unistd.h>

using platform::CodePage;
using platform::ProfileStore;
using platform::Result;

namespace {

constexpr int kKeys = 200;
constexpr int kKills = 200;

// A child process that runs a function with the writing end of a pipe; the test holds the reading end.
class Child
{
public:
    explicit Child(const std::function<void(int)>& work)
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            return;
        m_pid = fork();
        if (m_pid == 0) {
            close(ends[0]);
            work(ends[1]);
            _exit(0);
        }
        close(ends[1]);
        m_reading = ends[0];
    }
    ~Child()
    {
        if (m_pid > 0 && !m_reaped)
            killAndReap();
        close(m_reading);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Up to count bytes; fewer only when the child has ended.
    QByteArray read(int count) const
    {
        QByteArray bytes;
        char byte = 0;
        while (bytes.size() < count && ::read(m_reading, &byte, 1) == 1)
            bytes += byte;
        return bytes;
    }
    void killAndReap()
    {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, &m_status, 0);
        m_reaped = true;
    }
    bool diedOfTheKill() const { return WIFSIGNALED(m_status) && WTERMSIG(m_status) == SIGKILL; }

private:
    pid_t m_pid = -1;
    int m_reading = -1;
    int m_status = 0;
    bool m_reaped = false;
};

class Survival : public ::testing::Test
{
protected:
    QTemporaryDir dir;
    QString file = dir.filePath(QStringLiteral("p.ini"));

    static QByteArray contentOf(const QString& path)
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("<none>");
    }

    // The file after generation n: all keys hold n.
    static QByteArray generation(int n)
    {
        QByteArray bytes = "[S]\r\n";
        for (int key = 0; key < kKeys; ++key)
            bytes += "Key" + QByteArray::number(key) + '=' + QByteArray::number(n) + "\r\n";
        return bytes;
    }

    static Result<> writeGeneration(ProfileStore& store, const QString& path, int n)
    {
        ProfileStore::Batch batch(store);
        for (int key = 0; key < kKeys; ++key)
            std::ignore = store.write(path, QStringLiteral("S"), QStringLiteral("Key%1").arg(key), QString::number(n));
        return batch.commit();
    }

    // Writes one generation after the other and tells of each one that is done, until it is killed.
    void writeForEver(int from, int tell) const
    {
        ProfileStore store{CodePage()};
        for (int n = from;; ++n) {
            const char done = writeGeneration(store, file, n).ok() ? '.' : '!';
            if (write(tell, &done, 1) != 1)
                return;
        }
    }
};

TEST_F(Survival, KilledWriterLeavesAWholeFile)
{
    int last = 1000;
    {
        ProfileStore store{CodePage()};
        ASSERT_TRUE(writeGeneration(store, file, last).ok());
    }
    int newer = 0;
    for (int round = 0; round < kKills; ++round) {
        Child writer([&](int tell) { writeForEver(last + 1, tell); });
        const int told = round % 4;
        const QByteArray progress = writer.read(told);
        for (int pause = 0; pause < round * 3; ++pause)
            sched_yield(); // another point of the next write each time
        writer.killAndReap();
        ASSERT_TRUE(writer.diedOfTheKill());
        ASSERT_EQ(progress, QByteArray(told, '.')) << "the lock of the writer killed before is gone";
        const QByteArray bytes = contentOf(file);
        const int found = bytes.mid(bytes.indexOf('=') + 1).split('\r').first().toInt();
        ASSERT_EQ(bytes, generation(found)) << "round " << round << ": old or new, nothing between";
        ASSERT_GE(found, last + told) << "what was told to be written is there";
        newer += found > last + told ? 1 : 0;
        last = found;
    }
    EXPECT_GT(newer, 0) << "some were killed behind the point at which they had last told";
    ProfileStore store{CodePage()};
    EXPECT_TRUE(writeGeneration(store, file, 1).ok());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("p.ini")})
        << "what a killed writer left over is taken by the next one";
}

// Runs in the child: a write that the disk has no room for. Tells the outcome, and what a read gives afterwards.
void writeTooMuch(const QString& file, int tell)
{
    ProfileStore store{CodePage()};
    const Result<> outcome = store.write(file, QStringLiteral("S"), QStringLiteral("Big"), QString(200000, u'x'));
    const auto kept = store.read(file, QStringLiteral("S"), QStringLiteral("A"), QString(), 100);
    const auto lost = store.read(file, QStringLiteral("S"), QStringLiteral("Big"), QStringLiteral("none"), 100);
    const QByteArray report = (outcome.error() + u'|' + kept.text + u'|' + lost.text).toUtf8();
    if (write(tell, report.constData(), static_cast<size_t>(report.size())) != report.size())
        _exit(1);
}

TEST_F(Survival, FileSizeLimitIsToldAndKeepsTheOldFile)
{
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write("[S]\r\nA=1\r\n");
    out.close();
    const Child writer([this](int tell) {
        const rlimit limit{4096, 4096};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        writeTooMuch(file, tell);
    });
    EXPECT_EQ(writer.read(10000).toStdString(), file.toStdString() + " cannot be written: File too large|1|none");
    EXPECT_EQ(contentOf(file), "[S]\r\nA=1\r\n");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << "no litter";
}

TEST_F(Survival, PipeInPlaceOfAFileIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo(qPrintable(file), 0600), 0);
    ProfileStore store{CodePage()};
    EXPECT_EQ(store.read(file, QStringLiteral("S"), QStringLiteral("A"), QStringLiteral("none"), 100).text, u"none");
    const Result<> outcome = store.write(file, QStringLiteral("S"), QStringLiteral("A"), QStringLiteral("1"));
    EXPECT_TRUE(outcome.error().endsWith(u"it is not a regular file")) << qPrintable(outcome.error());
}

// A tiny file system of its own, seen by the child only and gone with it.
TEST_F(Survival, FullDiskIsToldAndKeepsTheOldFile)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can mount a small disk";
    const Child writer([this](int tell) {
        const QByteArray place = QFile::encodeName(dir.path());
        const bool mounted = unshare(CLONE_NEWNS) == 0 &&
                             mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                             mount("none", place.constData(), "tmpfs", 0, "size=64k") == 0;
        if (!mounted)
            return;
        ProfileStore before{CodePage()};
        std::ignore = before.write(file, QStringLiteral("S"), QStringLiteral("A"), QStringLiteral("1"));
        writeTooMuch(file, tell);
        const QByteArray after = '|' + contentOf(file) + '|' +
                                 QByteArray::number(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size());
        if (write(tell, after.constData(), static_cast<size_t>(after.size())) != after.size())
            _exit(1);
    });
    const QByteArray report = writer.read(10000);
    if (report.isEmpty())
        GTEST_SKIP() << "this machine does not let a test mount a disk";
    EXPECT_EQ(report.toStdString(),
              file.toStdString() + " cannot be written: No space left on device|1|none|[S]\r\nA=1\r\n|1");
}

} // namespace
