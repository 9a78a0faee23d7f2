#include "Journal.h"

#include "ChildProcess.h"
#include "ProcessIdentity.h"
#include "TestMachine.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace {

class WriteJournal : public ::testing::Test
{
protected:
    WriteJournal() { QDir().mkpath(journal.folder()); }

    static JournalEntry entry()
    {
        JournalEntry entry;
        entry.cause = "write all";
        entry.device = "/dev/ttyUSB0";
        entry.slave = 7;
        entry.mode = "RTU";
        entry.parameters = {{"VQSV1", "設定値\t\"1\"\n\x1b", "100", "120", ""}, {"PQB1", "Band", "", "5", ""}};
        return entry;
    }
    QString file() const { return box.path(kMarch); }
    QByteArray bytes() const { return box.content(kMarch); }
    void put(const QByteArray& content) const { ASSERT_TRUE(box.put(kMarch, content)); }

    inline static const QString kMarch = "C:\\Users\\state\\vorlant\\journal-2007-03.jsonl";
    TestMachine box;
    Journal journal{box.context};
};

TEST_F(WriteJournal, HoldsAWriteThatEndsInAnotherMonth)
{
    const auto id = journal.begin(entry());
    ASSERT_TRUE(id.ok()) << qPrintable(id.error());
    struct stat info
    {};
    ASSERT_EQ(stat(QFile::encodeName(file()).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600);
    EXPECT_EQ(bytes().count('\n'), 1);
    EXPECT_TRUE(bytes().contains("\"time\":\"2007-03-05T14:07:09.042")) << bytes().toStdString();
    box.clock.setNow(QDateTime(QDate(2007, 4, 1), QTime(0, 0)));
    QVector<JournalParameter> ended = entry().parameters;
    ended[0].outcome = "accepted";
    ended[1] = {"OTHER", "Other", "1", "2", "not sent"};
    ASSERT_TRUE(journal.complete(id.value(), "cancelled", ended).ok());
    EXPECT_TRUE(QFile::exists(journal.folder() + "/journal-2007-04.jsonl"));

    const JournalReading reading = journal.read();
    EXPECT_TRUE(reading.damagedLines == 0 && reading.unreadable.isEmpty());
    ASSERT_EQ(reading.entries.size(), 1);
    const JournalEntry& read = reading.entries[0];
    EXPECT_EQ(QStringList({read.user, read.cause, read.device, read.mode, read.outcome}).join('|'),
              platform::userName() + "|write all|/dev/ttyUSB0|RTU|cancelled");
    EXPECT_TRUE(read.id == id.value() && read.slave == 7 && !read.version.isEmpty() && !read.isInterrupted);
    EXPECT_EQ(read.begunAt, QDateTime(QDate(2007, 3, 5), QTime(14, 7, 9, 42)));
    EXPECT_EQ(read.endedAt, box.clock.now());
    QStringList parameters;
    for (const JournalParameter& parameter : read.parameters)
        parameters << parameter.name + '|' + parameter.held + '|' + parameter.value + '|' + parameter.outcome;
    EXPECT_EQ(parameters, QStringList({entry().parameters[0].name + "|100|120|accepted", "Band||5|", //
                                       "Other|1|2|not sent"}));
}

TEST_F(WriteJournal, DamagedLinesAreCountedAndCostNoOther)
{
    const std::tuple<const char*, QByteArray, int> rows[] = {
        {"half a line of a killed program", R"({"event":"begun","id":"1","ti)", 1},
        {"a power cut", QByteArray(4096, '\0'), 1},
        {"no object", "[1]\n7\n\"text\"\n", 3},
        {"another encoding", "{\"event\":\"begun\",\"id\":\"\xff\",\"time\":\"2007-03-05T14:07:09.042Z\"}\n", 1},
        {"no time", "{\"event\":\"begun\",\"id\":\"1\"}\n", 1},
        {"another event", "{\"event\":\"x\",\"id\":\"1\",\"time\":\"2007-03-05T14:07:09.042Z\"}\n", 1},
        {"interrupted, never begun", "{\"event\":\"interrupted\",\"id\":\"1\",\"time\":\"2007-03-05T14:07:09Z\"}\n", 1},
        {"empty lines", "\n\n", 0},
    };
    for (const auto& [name, content, damaged] : rows) {
        put(content);
        EXPECT_TRUE(journal.begin(entry()).ok() && journal.begin(entry()).ok()) << name;
        EXPECT_EQ(journal.read().entries.size(), 2) << name;
        EXPECT_EQ(journal.read().damagedLines, damaged) << name;
        EXPECT_TRUE(bytes().startsWith(content)) << name << ": never rewritten";
    }
    put(R"({"event":"completed","id":"1","time":"2007-03-05T14:07:09Z","outcome":"complete","parameters":[{"tag":"A"}]})");
    ASSERT_EQ(journal.read().entries.size(), 1);
    EXPECT_EQ(journal.read().entries[0].parameters.size(), 1) << "its begin is lost";
}

TEST_F(WriteJournal, ThoseThatAppendAtTheSameTimeTakeTurns)
{
    constexpr int kEach = 25;
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i)
        writers.emplace_back([this] {
            for (int n = 0; n < kEach; ++n)
                EXPECT_TRUE(journal.begin(entry()).ok());
        });
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(journal.read().entries.size(), 4 * kEach);
    EXPECT_EQ(journal.read().damagedLines, 0);
}

TEST_F(WriteJournal, FullDiskLeavesNoHalfLine)
{
    ASSERT_TRUE(journal.begin(entry()).ok());
    const QByteArray before = bytes();
    EXPECT_TRUE(trueInChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit room{static_cast<rlim_t>(before.size() + 20), RLIM_INFINITY};
        const bool isLimited = setrlimit(RLIMIT_FSIZE, &room) == 0;
        const QString told = journal.begin(entry()).error();
        return isLimited && told.startsWith(file() + ": ") && told.size() > file().size() + 2;
    }));
    EXPECT_EQ(bytes(), before);
}

TEST_F(WriteJournal, WhatIsNoFileIsToldAndNeverWaitedFor)
{
    using Make = std::function<bool(const std::filesystem::path&)>;
    const std::pair<const char*, Make> rows[] = {
        {"pipe", [](const auto& at) { return mkfifo(at.c_str(), 0600) == 0; }},
        {"folder", [](const auto& at) { return std::filesystem::create_directory(at); }},
        {"link", [](const auto& at) { return symlink("/dev/null", at.c_str()) == 0; }},
    };
    for (const auto& [name, make] : rows) {
        const std::filesystem::path at = file().toStdString();
        ASSERT_TRUE(make(at)) << name;
        const QString error = journal.begin(entry()).error();
        EXPECT_TRUE(error.startsWith(file() + ": ")) << name << qPrintable(error);
        EXPECT_EQ(journal.read().unreadable, QStringList(file())) << name;
        std::filesystem::remove(at);
    }
    QFile large(file());
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(qint64{256} * 1024 * 1024 + 1));
    EXPECT_EQ(journal.read().unreadable, QStringList(file()));
    std::filesystem::remove_all(journal.folder().toStdString());
    QFile inTheWay(journal.folder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_TRUE(journal.begin(entry()).error().contains(journal.folder()));
    EXPECT_TRUE(journal.read().entries.empty());
}

TEST_F(WriteJournal, InterruptedWritesAreToldOnce)
{
    ASSERT_TRUE(journal.begin(entry()).ok());
    EXPECT_TRUE(journal.interrupted().empty()) << "its program runs";
    // A later process has the number of the one that ended.
    const QByteArray own = "\"started\":" + QByteArray::number(platform::ProcessIdentity::own().started);
    put(bytes().replace(own, "\"started\":1"));
    ASSERT_TRUE(trueInChild([this] { return journal.begin(entry()).ok(); }));
    const auto done = journal.begin(entry());
    ASSERT_TRUE(done.ok() && journal.complete(done.value(), "failed", {}).ok());

    const std::vector<JournalEntry> found = journal.interrupted();
    ASSERT_EQ(found.size(), 2);
    ASSERT_TRUE(journal.noteInterrupted(found[0].id).ok());
    ASSERT_EQ(journal.interrupted().size(), 1);
    EXPECT_EQ(journal.interrupted()[0].id, found[1].id);
    const std::vector<JournalEntry> all = journal.read().entries;
    ASSERT_EQ(all.size(), 3);
    EXPECT_TRUE(all[0].isInterrupted && all[1].isInterrupted && !all[2].isInterrupted);
}

} // namespace
