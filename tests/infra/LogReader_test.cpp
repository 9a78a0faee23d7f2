#include "LogReader.h"

#include "TestMachine.h"
#include "clsLog.h"

#include <QFile>
#include <gtest/gtest.h>

#include <functional>

namespace {

// A ring of three records with room for 13 bytes each, written by the log itself.
class Reader : public ::testing::Test
{
protected:
    Reader()
    {
        log.setLogPath("C:\\Vorlant\\Log");
        log.setLogFileName("L.log");
        log.setMaxLogCnt(3);
        log.setLogRecSize(40);
    }

    // Messages with bars between them.
    void write(const QString& messages, int stepMs = 1)
    {
        for (const QString& message : messages.split('|', Qt::SkipEmptyParts)) {
            log.LogWrite(message);
            box.clock.advance(stepMs);
        }
    }
    static bool isTime(const QString& stamp)
    {
        return QDateTime::fromString(stamp, "yyyy/MM/dd HH:mm:ss:zzz").isValid();
    }
    // What is wrong, marks (~ lost, ! restarted) and the messages.
    QString look()
    {
        const char* const problems[] = {"", "missing", "unreadable", "damaged"};
        const LogReader::Look found = reader.look();
        QStringList texts;
        for (const auto& entry : found.entries)
            texts << (isTime(entry.stamp) ? entry.text : "no record");
        return QString(problems[static_cast<int>(found.problem)]) + (found.lost ? "~" : "") +
               (found.restarted ? "!" : "") + texts.join('|');
    }

    TestMachine box;
    clsLog log{box.machine};
    QString file = "C:\\Vorlant\\Log\\L.log";
    LogReader reader{box.machine.codePage, box.path(file)};
};

TEST_F(Reader, FollowsTheRing)
{
    struct Row
    {
        const char* name;
        const char* messages; // written after what happens
        const char* seen;
        std::function<void()> happens = [] {};
    };
    const auto patched = [this](qint64 offset, const QByteArray& bytes) {
        return [=, this] { box.put(file, box.content(file).replace(offset, bytes.size(), bytes)); };
    };
    const auto damaged = [this, patched] {
        write("t");
        patched(16 + 3 * 40, "garbage")();
    };
    const Row rows[] = {
        {"no file yet", "", "missing"},
        {"first lines", "a|b", "a|b"},
        {"nothing new", "", ""},
        {"round the end", "c|d", "c|d"},
        {"a whole round but one", "e|f", "e|f"},
        {"exactly one round", "g|h|i", "~g|h|i"},
        {"overtaken", "k|l|m|n|o", "~m|n|o"},
        {"empty", "", "missing", [this] { box.put(file, ""); }},
        {"cut off in the header", "", "damaged", patched(0, QByteArray(9, '\1'))},
        {"begun anew", "p", "!p"},
        {"other layout", "q|r", "!q|r", [this] { log.setMaxLogCnt(4); }},
        {"header points behind the end", "", "damaged", patched(8, QByteArray("\4\0\0\0", 4))},
        {"header is sound again", "s", "s", patched(8, QByteArray("\2\0\0\0", 4))},
        {"damaged record", "u", "no record|u", damaged},
        {"no count", "", "damaged", patched(0, QByteArray(4, '\0'))},
        {"huge size", "", "damaged", patched(0, QByteArray("\4\0\0\0\xff\xff\xff\x7f", 8))},
        {"removed", "", "missing", [this] { QFile::remove(box.path(file)); }},
        {"a folder", "", "unreadable", [this] { QDir().mkdir(box.path(file)); }},
    };
    for (const Row& row : rows) {
        row.happens();
        write(row.messages);
        EXPECT_EQ(look(), row.seen) << row.name;
    }
}

TEST_F(Reader, JoinsTheRecordsOfOneMessage)
{
    log.setMaxLogCnt(20);
    const std::tuple<const char*, const char*, QString> rows[] = {
        {"three records", "0123456789abcdefghijklmnopqrstuvwxyz", "0123456789abcdefghijklmnopqrstuvwxyz"},
        {"full one before a tag", "0123456789abc|(Error)R:", "0123456789abc|(Error)R:"},
        {"same stamp, room left", "0123456789ab|x", "0123456789ab|x"},
        {"double-byte character on the edge", "0123456789abソソ", "0123456789abソソ"},
        {"blanks within", "a    b  ", "a    b"},
    };
    for (const auto& [name, messages, seen] : rows) {
        write(messages, 0);
        box.clock.advance(1);
        EXPECT_EQ(look(), seen) << name;
    }
}

} // namespace
