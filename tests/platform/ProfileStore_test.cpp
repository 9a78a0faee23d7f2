#include "ProfileStore.h"

#include "ChildProcess.h"
#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sched.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tuple>

using platform::CodePage;
using platform::ProfileStore;

namespace {

class Profile : public ::testing::Test
{
protected:
    ScratchFolder box;
    CodePage page;
    ProfileStore store{page};
    QString file = box.path(QStringLiteral("p.ini"));

    void put(const QByteArray& bytes) const { ASSERT_TRUE(box.put(QStringLiteral("p.ini"), bytes)); }
    QByteArray content() const { return box.content(QStringLiteral("p.ini")); }
    QString get(const char16_t* key)
    {
        return store.read(file, QStringLiteral("S"), QString::fromUtf16(key), QStringLiteral("DEF"), 512).text;
    }
    platform::Result<> set(const char16_t* key, const char16_t* value)
    {
        return store.write(file, QStringLiteral("S"), QString::fromUtf16(key), QString::fromUtf16(value));
    }
};

TEST_F(Profile, AnswersAsRecorded)
{
    QString name;
    int answers = 0;
    for (const QStringList& row : tableRows("platform/profile.tsv")) {
        const auto text = [&](int field) { return page.toText(row[field].toLatin1()); };
        if (row[0] == u"case") {
            name = row[1];
            QFile::remove(file);
        } else if (row[0] == u"file") {
            put(row[1].toLatin1());
        } else if (row[0] == u"get") {
            const auto value = store.read(file, text(1), text(2), text(3), row[4].toInt());
            EXPECT_EQ(value.count, row[5].toInt()) << qPrintable(name + u' ' + row[2]);
            EXPECT_EQ(value.text, text(6)) << qPrintable(name + u' ' + row[2]);
            ++answers;
        } else if (row[0] == u"section") {
            QString joined;
            for (const QString& entry : store.readSection(file, text(1), row[2].toInt()))
                joined += entry + QChar(0);
            const bool isCut = !row[4].isEmpty() && !row[4].endsWith(QChar(0));
            EXPECT_EQ(joined, isCut ? text(4) + QChar(0) : text(4)) << qPrintable(name);
            ++answers;
        } else {
            EXPECT_TRUE(store.write(file, text(1), text(2), text(3)).ok()) << qPrintable(name);
        }
    }
    EXPECT_GE(answers, 70);
}

TEST_F(Profile, WritesKeepEverythingElse)
{
    put(QByteArray("; top\r\njunk line\r\n[S]\r\n  A = 1\r\n\r\n;note\r\n[T]\r\nX=\x83\x5c\r\n") +
        QByteArray("raw\0nul\r\n[S]\r\nA=9\r\nopen", 23));
    const QByteArray old = content();
    EXPECT_TRUE(set(u"a", u"2").ok());
    EXPECT_TRUE(set(u"B", u"3").ok());
    QByteArray expected = old;
    expected.replace("  A = 1\r\n", "A=2\r\n").replace(";note\r\n", ";note\r\nB=3\r\n");
    EXPECT_EQ(content(), expected);
}

TEST_F(Profile, FormOfTheFileSurvivesAWrite)
{
    for (const QStringList& row : tableRows("platform/forms.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        put(row[1].toLatin1());
        EXPECT_TRUE(set(u"名", u"値").ok());
        EXPECT_EQ(content(), row[2].toLatin1());
        EXPECT_EQ(get(u"名"), u"値");
    }
}

TEST_F(Profile, UnchangedWriteTouchesNoDiskAndAnOutsideEditIsSeen)
{
    put("[S]\r\nA = 1\r\n");
    EXPECT_TRUE(set(u"A", u"1").ok());
    EXPECT_EQ(store.replacements(), 0);
    EXPECT_EQ(content(), "[S]\r\nA = 1\r\n");
    put("[S]\r\nA=2\r\n");
    EXPECT_EQ(get(u"A"), u"2");
    QFile::remove(file);
    EXPECT_EQ(get(u"A"), u"DEF");
}

TEST_F(Profile, BatchReplacesOnceAndMergesOutsideEdits)
{
    put("[S]\r\nA=1\r\n");
    ProfileStore::Batch outer(store);
    {
        ProfileStore::Batch inner(store);
        for (int i = 0; i < 100; ++i)
            ASSERT_TRUE(set(u"N", QString::number(i).toStdU16String().c_str()).ok());
        EXPECT_TRUE(inner.commit().ok());
    }
    EXPECT_EQ(get(u"N"), u"99") << "readable before it is on disk";
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    put("[S]\r\nA=1\r\nOther=5\r\n");
    EXPECT_TRUE(outer.commit().ok());
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nOther=5\r\nN=99\r\n");
    EXPECT_EQ(store.replacements(), 1);
}

TEST_F(Profile, TwoProcessesLoseNothing)
{
    constexpr int kEach = 30;
    const auto writeMany = [&](const char16_t* prefix) {
        ProfileStore own{page};
        bool ok = true;
        for (int i = 0; i < kEach; ++i)
            ok = own.write(file, QStringLiteral("S"), QString::fromUtf16(prefix) + QString::number(i),
                           QStringLiteral("x"))
                     .ok() &&
                 ok;
        return ok;
    };
    const pid_t child = fork();
    if (child == 0)
        _exit(writeMany(u"child") ? 0 : 1);
    EXPECT_TRUE(writeMany(u"parent"));
    int status = 1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(store.readSection(file, QStringLiteral("S")).size(), 2 * kEach);
}

TEST_F(Profile, FailuresAreReportedAndKeepTheOldFile)
{
    put("[S]\r\nA=1\r\n");
    EXPECT_TRUE(trueInChild([&] {
        const rlimit limit{4096, 4096};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const std::u16string big(200000, u'x');
        return set(u"Big", big.c_str()).error() == file + QStringLiteral(" cannot be written: File too large") &&
               get(u"A") == u"1" && get(u"Big") == u"DEF";
    }));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    ASSERT_EQ(mkfifo(box.encoded(QStringLiteral("pipe.ini")).constData(), 0600), 0);
    ASSERT_TRUE(box.put(QStringLiteral("folder.ini/x"), "x"));
    const struct
    {
        const char* name;
        const char* error;
    } rows[] = {{"folder.ini", "cannot be read: it is a folder"},
                {"missing/p.ini", "cannot be written: No such file or directory"},
                {"pipe.ini", "cannot be read: it is not a regular file"}};
    for (const auto& row : rows) {
        file = box.path(QLatin1String(row.name));
        EXPECT_EQ(get(u"A"), u"DEF");
        EXPECT_EQ(set(u"A", u"2").error(), file + u' ' + QLatin1String(row.error));
    }
    EXPECT_EQ(box.names(), QStringList({"folder.ini", "p.ini", "pipe.ini"})) << "no litter";
}

TEST_F(Profile, KeysThatCouldNotBeFoundAgainAreRefused)
{
    for (const char16_t* key : {u"a=b", u"", u" ", u"two\nlines", u"[x]"})
        EXPECT_FALSE(set(key, u"1").ok());
    EXPECT_EQ(content(), "<none>");
    EXPECT_TRUE(set(u"K", u"two\r\nlines").ok());
    EXPECT_EQ(get(u"K"), u"two lines");
}

TEST_F(Profile, ValuesReadBackAsTheyWereWritten)
{
    const struct
    {
        QString written;
        QString read; // by another process
    } rows[] = {
        {QStringLiteral("\"q\""), QStringLiteral("\"q\"")},
        {QStringLiteral("''"), QStringLiteral("''")},
        {QStringLiteral("KX410   "), QStringLiteral("KX410   ")},
        {QStringLiteral("5\""), QStringLiteral("5\"")},
        {QString::fromUtf16(u"a\r\0b\r\0", 6), QStringLiteral("a b ")},
        {QStringLiteral("ﾂ｡"), QStringLiteral("ﾂ｡")}, // its bytes look like UTF-8
    };
    int replaced = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.read));
        put("[S]\r\nA=1\r\n");
        ++replaced;
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(store.write(file, QStringLiteral("S"), QStringLiteral("K"), row.written).ok());
            EXPECT_EQ(store.replacements(), replaced) << "the same write again changes nothing";
            EXPECT_EQ(get(u"K"), row.read);
            ProfileStore fresh{page};
            EXPECT_EQ(fresh.read(file, QStringLiteral("S"), QStringLiteral("K"), {}, 512).text, row.read);
        }
    }
    put(QByteArray("[S]\r\nA=1 x\0y\r\n", 15));
    EXPECT_EQ(get(u"A"), u"1 x") << "a value ends at a NUL";
}

TEST_F(Profile, DocumentsOfManyFilesAreForgotten)
{
    ProfileStore::Batch batch(store);
    for (int i = 0; i < 100; ++i) {
        file = box.path(QStringLiteral("%1.ini").arg(i));
        if (i < 50) {
            ASSERT_TRUE(set(u"A", QString::number(i).toStdU16String().c_str()).ok());
        } else {
            get(u"A");
        }
    }
    EXPECT_LE(store.documents(), 51) << "what a batch has still to write is kept";
    EXPECT_TRUE(batch.commit().ok());
    EXPECT_EQ(store.replacements(), 50);
    for (int i = 0; i < 100; ++i) {
        file = box.path(QStringLiteral("%1.ini").arg(i));
        EXPECT_EQ(get(u"A"), i < 50 ? QString::number(i) : QStringLiteral("DEF"));
    }
}

TEST_F(Profile, OnlySomeDocumentsAreKept)
{
    for (int i = 0; i < 2 * ProfileStore::kMaxDocuments; ++i) {
        file = box.path(QString::number(i));
        get(u"A");
    }
    EXPECT_EQ(store.documents(), ProfileStore::kMaxDocuments);
}

TEST_F(Profile, LinkStaysALink)
{
    const QString target = box.path(QStringLiteral("target.ini"));
    ASSERT_TRUE(QFile::link(target, file));
    for (const char* value : {"1", "2"}) { // the target is made, then replaced
        EXPECT_TRUE(set(u"A", QString::fromLatin1(value).toStdU16String().c_str()).ok());
        EXPECT_TRUE(QFileInfo(file).isSymLink());
        EXPECT_EQ(content(), QByteArray("[S]\r\nA=") + value + "\r\n");
    }
}

TEST_F(Profile, FileThatWasNotReadWholeIsNeverWritten)
{
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(box.path(), QFile::Permissions(0x7777));
    ASSERT_TRUE(geteuid() != 0 || chown(box.encoded(QStringLiteral("p.ini")).constData(), kOtherUser, kOtherUser) == 0);
    EXPECT_TRUE(trueAsOtherUser([&] {
        QFile::setPermissions(file, QFile::WriteOwner);
        ProfileStore::Batch batch(store); // the file is looked at once
        const bool unread = get(u"A") == u"DEF";
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        EXPECT_TRUE(unread);
        EXPECT_TRUE(set(u"B", u"2").error().contains(u"cannot be read"));
        EXPECT_FALSE(store.readable(file).ok());
        EXPECT_FALSE(batch.commit().ok()) << "a refusal within a batch is not lost";
        EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
        EXPECT_EQ(get(u"A"), u"1") << "it is tried again";
        return !HasFailure();
    }));
    file = QStringLiteral("/proc/self/mem"); // a regular file whose first read fails
    EXPECT_EQ(get(u"A"), u"DEF");
    EXPECT_TRUE(store.readable(file).error().contains(u"cannot be read"));
}

TEST_F(Profile, RightsAreThoseOfTheSystem)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs to change users";
    QFile::setPermissions(box.path(), QFile::Permissions(0x7777));
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther);
    EXPECT_TRUE(trueAsOtherUser([&] { return set(u"A", u"2").error().contains(u"read-only") && get(u"A") == u"1"; }));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther | QFile::WriteOther);
    EXPECT_TRUE(
        trueAsOtherUser([&] { return set(u"A", u"3").error().contains(u"its owner and group cannot be kept"); }));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    ASSERT_EQ(chown(box.encoded(QStringLiteral("p.ini")).constData(), kOtherUser, kOtherUser), 0);
    QFile::setPermissions(file, QFile::ReadOwner);
    EXPECT_TRUE(set(u"A", u"4").ok()) << "the system lets it be written";
    EXPECT_EQ(QFileInfo(file).ownerId(), kOtherUser);
    EXPECT_FALSE(QFileInfo(file).permission(QFile::WriteOwner));
}

TEST_F(Profile, CharacterThatTheCodePageLacksMakesTheFileUtf8)
{
    put("; \x96\xbc\r\n[S]\r\nK=\x92\x6c\r\n");
    EXPECT_TRUE(set(u"L", u"ü€").ok());
    EXPECT_EQ(content(), QByteArray("\xef\xbb\xbf; 名\r\n[S]\r\nK=値\r\nL=ü€\r\n"));
    EXPECT_EQ(get(u"K") + get(u"L"), u"値ü€");
    const QString marked = QChar(QChar::ByteOrderMark) + QStringLiteral("[x]");
    EXPECT_TRUE(store.write(file, QStringLiteral("S"), marked, QStringLiteral("1")).ok());
    EXPECT_EQ(ProfileStore(page).readSection(file, QStringLiteral("S")).size(), 3) << "a mark within is a character";
}

TEST_F(Profile, DefaultDoesNotReplaceWhatAnotherProgramStored)
{
    put("[S]\r\nB=\r\n");
    ProfileStore::Batch batch(store);
    EXPECT_EQ(get(u"A"), u"DEF");
    for (const char16_t* key : {u"A", u"B"})
        EXPECT_TRUE(store.writeDefault(file, QStringLiteral("S"), QString::fromUtf16(key), QStringLiteral("DEF")).ok());
    put("[S]\r\nA=other\r\nB=\r\n");
    EXPECT_TRUE(batch.commit().ok());
    EXPECT_EQ(content(), "[S]\r\nA=other\r\nB=DEF\r\n");
}

TEST_F(Profile, FailureIsRepeatedUntilASuccess)
{
    file = box.path(QStringLiteral("later/p.ini"));
    EXPECT_FALSE(set(u"A", u"1").isRepeated());
    EXPECT_TRUE(set(u"B", u"1").isRepeated());
    QDir(box.path()).mkdir(QStringLiteral("later"));
    EXPECT_TRUE(set(u"A", u"1").ok());
    QDir(box.path(QStringLiteral("later"))).removeRecursively();
    EXPECT_FALSE(set(u"C", u"1").isRepeated());
}

TEST_F(Profile, BatchWithoutCommitIsDropped)
{
    {
        ProfileStore::Batch batch(store);
        EXPECT_TRUE(set(u"A", u"1").ok());
    }
    EXPECT_EQ(content(), "<none>");
    EXPECT_EQ(get(u"A"), u"DEF");
}

// The file after generation n: all keys hold n.
QByteArray generation(int n)
{
    QByteArray bytes = "[S]\r\n";
    for (int key = 0; key < 200; ++key)
        bytes += "Key" + QByteArray::number(key) + '=' + QByteArray::number(n) + "\r\n";
    return bytes;
}

// Writes one generation after the other and reports each one that is done, until it is killed.
[[noreturn]] void writeForEver(const QString& file, int from, int report)
{
    ProfileStore store{CodePage()};
    for (int n = from;; ++n) {
        ProfileStore::Batch batch(store);
        for (int key = 0; key < 200; ++key)
            std::ignore = store.write(file, QStringLiteral("S"), QStringLiteral("Key%1").arg(key), QString::number(n));
        if (!batch.commit().ok() || write(report, ".", 1) != 1)
            _exit(1);
    }
}

TEST_F(Profile, KilledWriterLeavesAWholeFile)
{
    constexpr int kKills = 60;
    int last = 1000;
    put(generation(last));
    for (int round = 0; round < kKills; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t writer = fork();
        if (writer == 0)
            writeForEver(file, last + 1, ends[1]);
        close(ends[1]);
        const int reported = round % 4;
        char done = 0;
        for (int i = 0; i < reported; ++i)
            ASSERT_EQ(read(ends[0], &done, 1), 1) << "the lock of the writer killed before is gone";
        for (int pause = 0; pause < round % 20 * 10; ++pause)
            sched_yield(); // another point of the next write each time
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        close(ends[0]);
        const QByteArray bytes = content();
        const int found = bytes.mid(bytes.indexOf('=') + 1).split('\r').first().toInt();
        ASSERT_EQ(bytes, generation(found)) << "round " << round << ": old or new, nothing between";
        ASSERT_GE(found, last + reported) << "what was reported as written is there";
        last = found;
    }
    EXPECT_TRUE(set(u"Key0", u"1").ok());
    EXPECT_EQ(box.names(), QStringList{QStringLiteral("p.ini")}) << "the next one removes what a killed one left";
}

} // namespace
