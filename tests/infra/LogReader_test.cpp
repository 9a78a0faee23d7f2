#include "LogReader.h"

#include "TestMachine.h"
#include "clsLog.h"

#include <QFile>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using Problem = LogReader::Problem;

// A ring of three records with room for 13 bytes each, written by the log itself.
class Reader : public ::testing::Test
{
public:
    Reader()
    {
        log.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
        log.setLogFileName(QStringLiteral("L.log"));
        log.setMaxLogCnt(3);
        log.setLogRecSize(40);
        reader = std::make_unique<LogReader>(box.machine.codePage, log.filePath());
    }

    void write(std::initializer_list<const char*> messages, int stepMs = 1)
    {
        for (const char* message : messages) {
            log.LogWrite(QString::fromUtf8(message));
            box.clock.advance(stepMs);
        }
    }
    void patch(qint64 offset, const QByteArray& bytes)
    {
        QFile file(log.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(offset));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    // "a|b", with a mark in front: ~ lost, ! restarted, ?N the problem.
    QString look()
    {
        const LogReader::Look found = reader->look();
        QStringList texts;
        for (const auto& entry : found.entries)
            texts << (entry.stamp.isEmpty() ? QStringLiteral("damaged") : entry.text);
        const QString problem =
            found.problem == Problem::None ? QString() : QStringLiteral("?%1").arg(static_cast<int>(found.problem));
        return problem + QLatin1String(found.lost ? "~" : "") + QLatin1String(found.restarted ? "!" : "") +
               texts.join(u'|');
    }

    TestMachine box;
    clsLog log{box.machine};
    std::unique_ptr<LogReader> reader;
};

TEST_F(Reader, FollowsTheRing)
{
    struct Row
    {
        const char* name;
        std::initializer_list<const char*> messages; // written after what happens
        const char* seen;
        std::function<void(Reader&)> happens = [](Reader&) {};
    } const rows[] = {
        {"no file yet", {}, "?1"},
        {"first lines", {"a", "b"}, "a|b"},
        {"nothing new", {}, ""},
        {"round the end", {"c", "d"}, "c|d"},
        {"a whole round but one", {"e", "f"}, "e|f"},
        {"exactly one round", {"g", "h", "i"}, "~g|h|i"},
        {"overtaken", {"k", "l", "m", "n", "o"}, "~m|n|o"},
        {"empty", {}, "?1", [](Reader& r) { QFile(r.log.filePath()).resize(0); }},
        {"cut off in the header", {}, "?3", [](Reader& r) { r.patch(0, QByteArray(9, '\1')); }},
        {"begun anew", {"p"}, "!p"},
        {"other layout", {"q", "r"}, "!q|r", [](Reader& r) { r.log.setMaxLogCnt(4); }},
        {"header points behind the end", {}, "?3", [](Reader& r) { r.patch(8, QByteArray("\4\0\0\0", 4)); }},
        {"header is sound again", {"s"}, "s", [](Reader& r) { r.patch(8, QByteArray("\2\0\0\0", 4)); }},
        {"no count", {}, "?3", [](Reader& r) { r.patch(0, QByteArray(4, '\0')); }},
        {"huge size", {}, "?3", [](Reader& r) { r.patch(0, QByteArray("\4\0\0\0\xff\xff\xff\x7f", 8)); }},
        {"removed", {}, "?1", [](Reader& r) { QFile::remove(r.log.filePath()); }},
        {"a folder", {}, "?2", [](Reader& r) { QDir().mkdir(r.log.filePath()); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        row.happens(*this);
        write(row.messages);
        EXPECT_EQ(look(), QString::fromLatin1(row.seen));
    }
}

TEST_F(Reader, JoinsTheRecordsOfOneMessage)
{
    log.setMaxLogCnt(20);
    struct
    {
        const char* name;
        std::initializer_list<const char*> messages;
        const char* seen;
    } const rows[] = {
        {"three records", {"0123456789abcdefghijklmnopqrstuvwxyz"}, "0123456789abcdefghijklmnopqrstuvwxyz"},
        {"full one before a tag", {"0123456789abc", "(Error)R:"}, "0123456789abc|(Error)R:"},
        {"same stamp, room left", {"0123456789ab", "x"}, "0123456789ab|x"},
        {"double-byte character on the edge", {"0123456789abソソ"}, "0123456789abソソ"},
        {"blanks within", {"a    b  "}, "a    b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write(row.messages, 0);
        box.clock.advance(1);
        EXPECT_EQ(look(), QString::fromUtf8(row.seen));
    }
}

TEST_F(Reader, StampAndDamagedRecord)
{
    write({"a", "b"});
    patch(16, "garbage");
    const auto entries = reader->look().entries;
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_TRUE(entries[0].stamp.isEmpty());
    EXPECT_EQ(entries[1].stamp, u"2007/03/05 14:07:09:043");
}

} // namespace
