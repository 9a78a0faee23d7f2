#include "ProfileStore.h"

#include "ChildProcess.h"
#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sched.h>
#include <sys/stat.h>

using platform::CodePage;
using platform::ProfileStore;

namespace {

class Profile : public ::testing::Test
{
protected:
    ScratchFolder box;
    CodePage page;
    ProfileStore store{page};
    QString file = box.path("p.ini");

    void put(const QByteArray& bytes) const { ASSERT_TRUE(box.put("p.ini", bytes)); }
    QByteArray content() const { return box.content("p.ini"); }
    QString get(const QString& key) { return store.read(file, "S", key, "DEF", 512).text; }
    platform::Result<> set(const QString& key, const QString& value) { return store.write(file, "S", key, value); }
};

TEST_F(Profile, AnswersAsRecorded)
{
    QString name;
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
        } else if (row[0] == u"section") {
            QString joined;
            for (const QString& entry : store.readSection(file, text(1), row[2].toInt()))
                joined += entry + QChar(0);
            const bool isCut = !row[4].isEmpty() && !row[4].endsWith(QChar(0));
            EXPECT_EQ(joined, isCut ? text(4) + QChar(0) : text(4)) << qPrintable(name);
        } else {
            EXPECT_TRUE(store.write(file, text(1), text(2), text(3)).ok()) << qPrintable(name);
        }
    }
}

TEST_F(Profile, WritesKeepEverythingElse)
{
    for (const int more : {0, 100}) { // a few lines, and so many that they get an index
        put(QByteArray("; top\r\njunk line\r\n[S]\r\n  A = 1\r\n") + QByteArray("a=5\r\n").repeated(more) +
            "\r\n;note\r\n[T]\r\nX=\x83\x5c\r\n" + QByteArray("raw\0nul\r\n[S]\r\nA=9\r\nopen", 23));
        QByteArray expected = content();
        EXPECT_TRUE(set("a", "2").ok());
        for (const char* value : {"3", "4"})
            EXPECT_TRUE(set("B", value).ok());
        expected.replace("  A = 1\r\n", "A=2\r\n").replace(";note\r\n", ";note\r\nB=4\r\n");
        EXPECT_EQ(content(), expected);
    }
}

TEST_F(Profile, FormOfTheFileSurvivesAWrite)
{
    for (const QStringList& row : tableRows("platform/forms.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        put(row[1].toLatin1());
        EXPECT_TRUE(set("名", "値").ok());
        EXPECT_EQ(content(), row[2].toLatin1());
        EXPECT_EQ(get("名"), u"値");
    }
}

TEST_F(Profile, UnchangedWriteTouchesNoDiskAndAnOutsideEditIsSeen)
{
    put("[S]\r\nA = 1\r\n");
    EXPECT_TRUE(set("A", "1").ok());
    EXPECT_EQ(store.replacements(), 0);
    EXPECT_EQ(content(), "[S]\r\nA = 1\r\n");
    put("[S]\r\nA=2\r\n");
    EXPECT_EQ(get("A"), u"2");
    QFile::remove(file);
    EXPECT_EQ(get("A"), u"DEF");
}

TEST_F(Profile, BatchReplacesOnceAndMergesOutsideEdits)
{
    put("[S]\r\nA=1\r\n");
    ProfileStore::Batch outer(store);
    {
        ProfileStore::Batch inner(store);
        for (int i = 0; i < 100; ++i)
            ASSERT_TRUE(set("N", QString::number(i)).ok());
        EXPECT_TRUE(inner.commit().ok());
    }
    EXPECT_EQ(get("N"), u"99") << "readable before it is on disk";
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    put("[S]\r\nA=1\r\nOther=5\r\n");
    EXPECT_TRUE(outer.commit().ok());
    EXPECT_EQ(content(), "[S]\r\nA=1\r\nOther=5\r\nN=99\r\n");
    EXPECT_EQ(store.replacements(), 1);
    {
        ProfileStore::Batch dropped(store);
        EXPECT_TRUE(set("A", "2").ok());
    }
    EXPECT_EQ(get("A"), u"1");
    EXPECT_EQ(store.replacements(), 1);
}

TEST_F(Profile, TwoProcessesLoseNothing)
{
    constexpr int kEach = 30;
    const auto writeMany = [&](const QString& prefix) {
        int written = 0;
        for (int i = 0; i < kEach; ++i)
            written += store.write(file, "S", prefix + QString::number(i), "x").ok() ? 1 : 0;
        return written == kEach;
    };
    const pid_t child = fork();
    if (child == 0)
        _exit(writeMany("child") ? 0 : 1);
    EXPECT_TRUE(writeMany("parent"));
    int status = 1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(store.readSection(file, "S").size(), 2 * kEach);
}

TEST_F(Profile, FailuresAreReported)
{
    ASSERT_EQ(mkfifo(box.encoded("pipe.ini").constData(), 0600), 0);
    ASSERT_TRUE(box.put("folder.ini/x", "x"));
    const std::pair<const char*, const char*> rows[] = {
        {"folder.ini", "cannot be read: it is a folder"},
        {"missing/p.ini", "cannot be written: No such file or directory"},
        {"pipe.ini", "cannot be read: it is not a regular file"}};
    for (const auto& [name, error] : rows) {
        file = box.path(name);
        EXPECT_EQ(get("A"), u"DEF");
        EXPECT_EQ(set("A", "2").error(), file + ' ' + error);
        EXPECT_EQ(get("A"), u"DEF") << "what could not be written is not there";
    }
    EXPECT_EQ(box.names(), QStringList({"folder.ini", "pipe.ini"})) << "no litter";
}

TEST_F(Profile, KeysThatCouldNotBeFoundAgainAreRefused)
{
    ProfileStore::Batch batch(store);
    for (const char* key : {"a=b", "", " ", "two\nlines", "[x]"})
        EXPECT_FALSE(set(key, "1").ok());
    EXPECT_TRUE(batch.commit().isRepeated()) << "whoever wrote has heard of it";
    EXPECT_EQ(content(), "<none>");
    EXPECT_TRUE(set("K", "two\r\nlines").ok());
    EXPECT_EQ(get("K"), u"two lines");
}

TEST_F(Profile, ValuesReadBackAsTheyWereWritten)
{
    const QString controls = QString::fromUtf16(u"a\r\0b\r\0", 6);
    const QString likeUtf8 = "ﾂ｡"; // by its bytes
    int replaced = 0;
    for (const QString& written :
         {QString("\"q\""), QString("''"), QString("KX410   "), QString("5\""), controls, likeUtf8}) {
        const QString read = written == controls ? "a b " : written;
        put("[S]\r\nA=1\r\n");
        ++replaced;
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(set("K", written).ok());
            EXPECT_EQ(store.replacements(), replaced) << "the same write again changes nothing: " << qPrintable(read);
            EXPECT_EQ(get("K"), read);
            EXPECT_EQ(ProfileStore(page).read(file, "S", "K", {}, 512).text, read) << "by another process";
        }
    }
    put(QByteArray("[S]\r\nA=1 x\0y\r\n", 15));
    EXPECT_EQ(get("A"), u"1 x") << "a value ends at a NUL";
}

TEST_F(Profile, DocumentsOfManyFilesAreForgotten)
{
    ProfileStore::Batch batch(store);
    for (int i = 0; i < 100; ++i) {
        file = box.path(QString::number(i));
        ASSERT_TRUE(i >= 50 || set("A", "1").ok());
        get("A");
    }
    EXPECT_LE(store.documents(), 51) << "what a batch has still to write is kept";
    EXPECT_TRUE(batch.commit().ok());
    EXPECT_EQ(store.replacements(), 50);
    ProfileStore reader(page);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(reader.read(box.path(QString::number(i)), "S", "A", "DEF", 512).text, i < 50 ? "1" : "DEF");
    EXPECT_EQ(reader.documents(), ProfileStore::kMaxDocuments);
}

TEST_F(Profile, LinkStaysALink)
{
    ASSERT_TRUE(QFile::link(box.path("target.ini"), file));
    for (const char* value : {"1", "2"}) { // the target is made, then replaced
        EXPECT_TRUE(set("A", value).ok());
        EXPECT_TRUE(QFileInfo(file).isSymLink());
        EXPECT_EQ(content(), QByteArray("[S]\r\nA=") + value + "\r\n");
    }
}

TEST_F(Profile, FileThatWasNotReadWholeIsNeverWritten)
{
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(box.path(), QFile::Permissions(0x7777));
    ASSERT_TRUE(geteuid() != 0 || chown(box.encoded("p.ini").constData(), kOtherUser, kOtherUser) == 0);
    EXPECT_TRUE(trueAsOtherUser([&] {
        QFile::setPermissions(file, QFile::WriteOwner);
        ProfileStore::Batch batch(store); // the file is looked at once
        const bool unread = get("A") == u"DEF";
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        EXPECT_TRUE(unread);
        EXPECT_TRUE(set("B", "2").error().contains(u"cannot be read"));
        EXPECT_FALSE(store.readable(file).ok());
        EXPECT_FALSE(batch.commit().ok()) << "a refusal within a batch is not lost";
        EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
        EXPECT_EQ(get("A"), u"1") << "it is tried again";
        return !HasFailure();
    }));
    file = "/proc/self/mem"; // a regular file whose first read fails
    EXPECT_EQ(get("A"), u"DEF");
    EXPECT_TRUE(store.readable(file).error().contains(u"cannot be read"));
}

TEST_F(Profile, RightsAreThoseOfTheSystem)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs to change users";
    QFile::setPermissions(box.path(), QFile::Permissions(0x7777));
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther);
    EXPECT_TRUE(trueAsOtherUser([&] { return set("A", "2").error().contains(u"read-only") && get("A") == u"1"; }));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther | QFile::WriteOther);
    EXPECT_TRUE(trueAsOtherUser([&] { return set("A", "3").error().contains(u"its owner and group cannot be kept"); }));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    ASSERT_EQ(chown(box.encoded("p.ini").constData(), kOtherUser, kOtherUser), 0);
    QFile::setPermissions(file, QFile::ReadOwner);
    EXPECT_TRUE(set("A", "4").ok()) << "the system lets it be written";
    EXPECT_EQ(QFileInfo(file).ownerId(), kOtherUser);
    EXPECT_FALSE(QFileInfo(file).permission(QFile::WriteOwner));
}

TEST_F(Profile, CharacterThatTheCodePageLacksMakesTheFileUtf8)
{
    put("; \x96\xbc\r\n[S]\r\nK=\x92\x6c\r\n");
    EXPECT_TRUE(set("L", "ü€").ok());
    EXPECT_EQ(content(), QByteArray("\xef\xbb\xbf; 名\r\n[S]\r\nK=値\r\nL=ü€\r\n"));
    EXPECT_EQ(get("K") + get("L"), u"値ü€");
    EXPECT_TRUE(set(QChar(QChar::ByteOrderMark) + QString("[x]"), "1").ok());
    EXPECT_EQ(ProfileStore(page).readSection(file, "S").size(), 3) << "a mark within is a character";
}

TEST_F(Profile, DefaultDoesNotReplaceWhatAnotherProgramStored)
{
    put("[S]\r\nB=\r\n");
    ProfileStore::Batch batch(store);
    EXPECT_EQ(get("A"), u"DEF");
    for (const char* key : {"A", "B"})
        EXPECT_TRUE(store.writeDefault(file, "S", key, "DEF").ok());
    put("[S]\r\nA=other\r\nB=\r\n");
    EXPECT_TRUE(batch.commit().ok());
    EXPECT_EQ(content(), "[S]\r\nA=other\r\nB=DEF\r\n");
}

TEST_F(Profile, FailureIsRepeatedUntilASuccess)
{
    file = box.path("later/p.ini");
    EXPECT_FALSE(set("A", "1").isRepeated());
    EXPECT_TRUE(set("B", "1").isRepeated());
    QDir(box.path()).mkdir("later");
    EXPECT_TRUE(set("A", "1").ok());
    QDir(box.path("later")).removeRecursively();
    EXPECT_FALSE(set("C", "1").isRepeated());
    file = box.path("folder.ini");
    for (int i = 0; i < 2; ++i) {
        box.put("folder.ini/x", "");
        EXPECT_FALSE(set("A", "1").isRepeated()) << "it could be read in between";
        QDir(file).removeRecursively();
        EXPECT_EQ(get("A"), u"DEF");
    }
}

TEST_F(Profile, KilledWriterLeavesAWholeFile)
{
    constexpr int kKills = 60;
    const auto value = [](int generation) { return QByteArray::number(generation).repeated(1000); };
    int last = 10000;
    put("[S]\r\nKey=" + value(last) + "\r\n");
    for (int round = 0; round < kKills; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t writer = fork();
        if (writer == 0) { // reports each generation that is written, until it is killed
            for (int next = last + 1; set("Key", QString(value(next))).ok() && write(ends[1], ".", 1) == 1;)
                ++next;
            _exit(1);
        }
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
        const int found = content().mid(9, 5).toInt();
        ASSERT_EQ(content(), "[S]\r\nKey=" + value(found) + "\r\n")
            << "round " << round << ": old or new, nothing between";
        ASSERT_GE(found, last + reported) << "what was reported as written is there";
        last = found;
    }
    EXPECT_TRUE(set("Key", "1").ok());
    EXPECT_EQ(box.names(), QStringList{"p.ini"}) << "the next one removes what a killed one left";
}

} // namespace
