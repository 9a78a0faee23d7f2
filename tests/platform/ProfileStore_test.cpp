#include "ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

using platform::CodePage;
using platform::ProfileStore;

namespace {

// Bytes of a C-escaped text between the quotes, as the recorded file writes them.
QByteArray unescaped(const QByteArray& text)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        const char kind = text[++i];
        if (kind == 'x') {
            bytes += QByteArray::fromHex(text.mid(i + 1, 2));
            i += 2;
        } else {
            bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
        }
    }
    return bytes;
}

// The quoted texts of a line, in order.
QList<QByteArray> quotedTexts(const QByteArray& line)
{
    QList<QByteArray> texts;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != '"')
            continue;
        const auto start = ++i;
        for (; line[i] != '"'; ++i) {
            if (line[i] == '\\')
                ++i;
        }
        texts << unescaped(line.mid(start, i - start));
    }
    return texts;
}

class Profile : public ::testing::Test
{
protected:
    QTemporaryDir dir;
    CodePage page;
    ProfileStore store{page};
    QString file = dir.filePath(QStringLiteral("p.ini"));

    void put(const QByteArray& bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    QByteArray content()
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("<none>");
    }
    QString get(const char16_t* key)
    {
        return store.read(file, QStringLiteral("S"), QString::fromUtf16(key), QStringLiteral("DEF"), 512).text;
    }
    platform::Result<> set(const char16_t* key, const char16_t* value)
    {
        return store.write(file, QStringLiteral("S"), QString::fromUtf16(key), QString::fromUtf16(value));
    }
};

// Runs the recorded script of reads and writes; every answer must be the recorded one.
TEST_F(Profile, AnswersAsRecorded)
{
    QFile script(QStringLiteral(VORLANT_TEST_DATA "/platform/profile.txt"));
    ASSERT_TRUE(script.open(QIODevice::ReadOnly));
    QByteArray name;
    int answers = 0;
    while (!script.atEnd()) {
        const QByteArray line = script.readLine().trimmed();
        const QList<QByteArray> texts = quotedTexts(line);
        const auto text = [&](int i) { return page.toText(texts[i]); };
        if (line.startsWith("case ")) {
            name = line.mid(5);
            QFile::remove(file);
        } else if (line.startsWith("file \"")) {
            put(texts[0]);
        } else if (line.startsWith("get ")) {
            const QList<QByteArray> arrow = line.mid(line.lastIndexOf("\" ", line.indexOf(" -> ")) + 2).split(' ');
            const auto value = store.read(file, text(0), text(1), text(2), arrow[0].toInt());
            EXPECT_EQ(value.count, arrow[2].toInt()) << name.constData() << ": " << line.left(80).constData();
            EXPECT_EQ(page.fromText(value.text), texts[3]) << name.constData() << ": " << line.left(80).constData();
            ++answers;
        } else if (line.startsWith("section ")) {
            QByteArray joined;
            const int size = line.mid(line.indexOf("\" ") + 2, line.indexOf(" -> ")).split(' ')[0].toInt();
            for (const QString& entry : store.readSection(file, text(0), size))
                joined += page.fromText(entry) + '\0';
            const bool isCut = !texts[1].isEmpty() && !texts[1].endsWith('\0');
            EXPECT_EQ(joined, isCut ? texts[1] + '\0' : texts[1]) << name.constData();
            ++answers;
        } else if (line.startsWith("put ")) {
            EXPECT_TRUE(store.write(file, text(0), text(1), text(2)).ok()) << name.constData();
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

struct FormCase
{
    const char* name;
    QByteArray before;
    QByteArray after;
};

TEST_F(Profile, FormOfTheFileSurvivesAWrite)
{
    for (const FormCase& row :
         {FormCase{"LineFeeds", "[S]\nK=1\n\n[T]\n", "[S]\nK=1\n\x96\xbc=\x92\x6c\n\n[T]\n"},
          FormCase{"Utf8", "[S]\r\nK=\xe5\x80\xa4\r\n", "[S]\r\nK=\xe5\x80\xa4\r\n\xe5\x90\x8d=\xe5\x80\xa4\r\n"},
          FormCase{"Utf8Mark", "\xef\xbb\xbf[S]\r\n", "\xef\xbb\xbf[S]\r\n\xe5\x90\x8d=\xe5\x80\xa4\r\n"},
          FormCase{"MixedEnds", "[S]\r\nA=1\nB=2\r\rK=1\n[T]\n", "[S]\r\nA=1\nB=2\r\rK=1\n\x96\xbc=\x92\x6c\r\n[T]\n"},
          FormCase{"Utf16", QByteArray("\xff\xfe[\0S\0]\0\n\0", 10),
                   QByteArray("\xff\xfe[\0S\0]\0\n\0\x0dT=\0$P\n\0", 18)},
          FormCase{"OpenEnd", "[S]\nK=1", "[S]\nK=1\n\x96\xbc=\x92\x6c\n"}}) {
        SCOPED_TRACE(row.name);
        put(row.before);
        EXPECT_TRUE(set(u"名", u"値").ok());
        EXPECT_EQ(content(), row.after);
        EXPECT_EQ(get(u"名"), u"値");
    }
}

TEST_F(Profile, UnchangedWriteTouchesNoDisk)
{
    put("[S]\r\nA = 1\r\n");
    EXPECT_TRUE(set(u"A", u"1").ok());
    EXPECT_EQ(store.replacements(), 0);
    EXPECT_EQ(content(), "[S]\r\nA = 1\r\n");
}

TEST_F(Profile, OutsideEditIsSeenAtTheNextCall)
{
    put("[S]\r\nA=1\r\n");
    EXPECT_EQ(get(u"A"), u"1");
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
    constexpr int kEach = 100;
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
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(store.readSection(file, QStringLiteral("S")).size(), 2 * kEach);
}

TEST_F(Profile, FailuresAreToldAndKeepTheOldFile)
{
    put("[S]\r\nA=1\r\n");
    file = dir.filePath(QStringLiteral("folder.ini"));
    QDir().mkdir(file);
    EXPECT_EQ(get(u"A"), u"DEF");
    EXPECT_FALSE(set(u"A", u"2").ok());
    file = dir.filePath(QStringLiteral("missing/p.ini"));
    EXPECT_FALSE(set(u"A", u"2").ok());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("p.ini")})
        << "no litter";
}

TEST_F(Profile, KeysThatCouldNotBeFoundAgainAreRefused)
{
    for (const char16_t* key : {u"a=b", u"", u" ", u"two\nlines", u"[x]"})
        EXPECT_FALSE(set(key, u"1").ok());
    EXPECT_EQ(content(), "<none>");
    EXPECT_TRUE(set(u"K", u"two\r\nlines").ok());
    EXPECT_EQ(get(u"K"), u"two lines");
}

struct ValueCase
{
    const char* name;
    QString written;
    QString read; // by another process
};

class Value : public Profile, public ::testing::WithParamInterface<ValueCase>
{};

TEST_P(Value, ReadsBack)
{
    put("[S]\r\nA=1\r\n");
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(store.write(file, QStringLiteral("S"), QStringLiteral("K"), GetParam().written).ok());
        EXPECT_EQ(store.replacements(), 1) << "the same write again changes nothing";
        EXPECT_EQ(get(u"K"), GetParam().read);
        ProfileStore fresh{page};
        EXPECT_EQ(fresh.read(file, QStringLiteral("S"), QStringLiteral("K"), {}, 512).text, GetParam().read);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, Value,
                         ::testing::Values(ValueCase{"Quoted", QStringLiteral("\"q\""), QStringLiteral("\"q\"")},
                                           ValueCase{"SingleQuotes", QStringLiteral("''"), QStringLiteral("''")},
                                           ValueCase{"Blanks", QStringLiteral("KX410   "), QStringLiteral("KX410   ")},
                                           ValueCase{"OneQuote", QStringLiteral("5\""), QStringLiteral("5\"")},
                                           ValueCase{"NulBehindABreak", QString::fromUtf16(u"a\r\0b\r\0", 6),
                                                     QStringLiteral("a b ")},
                                           ValueCase{"LooksLikeUtf8", QStringLiteral("ﾂ｡"), QStringLiteral("ﾂ｡")}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Profile, ValueEndsAtANul)
{
    put(QByteArray("[S]\r\nA=1 x\0y\r\n", 15));
    EXPECT_EQ(get(u"A"), u"1 x");
}

TEST_F(Profile, DocumentsOfManyFilesAreForgotten)
{
    ProfileStore::Batch batch(store);
    for (int i = 0; i < 100; ++i) {
        file = dir.filePath(QStringLiteral("%1.ini").arg(i));
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
        file = dir.filePath(QStringLiteral("%1.ini").arg(i));
        EXPECT_EQ(get(u"A"), i < 50 ? QString::number(i) : QStringLiteral("DEF"));
    }
}

TEST_F(Profile, LinkStaysALink)
{
    const QString target = dir.filePath(QStringLiteral("target.ini"));
    ASSERT_TRUE(QFile::link(target, file));
    for (const char* value : {"1", "2"}) { // the target is made, then replaced
        EXPECT_TRUE(set(u"A", QString::fromLatin1(value).toStdU16String().c_str()).ok());
        EXPECT_TRUE(QFileInfo(file).isSymLink());
        EXPECT_EQ(content(), QByteArray("[S]\r\nA=") + value + "\r\n");
    }
}

// True when `work` gave true in a process without root's rights, whom the owner's mode bits hold back as well.
template <typename Work> bool asOther(Work work)
{
    constexpr uid_t kOtherText = 65534;
    const pid_t child = fork();
    if (child == 0)
        _exit((geteuid() != 0 || (setgid(kOtherText) == 0 && setuid(kOtherText) == 0)) && work() ? 0 : 1);
    int status = 1;
    return waitpid(child, &status, 0) == child && status == 0;
}

TEST_F(Profile, FileThatWasNotReadWholeIsNeverWritten)
{
    constexpr uid_t kOtherText = 65534;
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(dir.path(), QFile::Permissions(0x7777));
    ASSERT_TRUE(geteuid() != 0 || chown(QFile::encodeName(file).constData(), kOtherText, kOtherText) == 0);
    EXPECT_TRUE(asOther([&] {
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
    constexpr uid_t kOtherText = 65534;
    QFile::setPermissions(dir.path(), QFile::Permissions(0x7777));
    put("[S]\r\nA=1\r\n");
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther);
    EXPECT_TRUE(asOther([&] { return set(u"A", u"2").error().contains(u"read-only") && get(u"A") == u"1"; }));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther | QFile::WriteOther);
    EXPECT_TRUE(asOther([&] { return set(u"A", u"3").error().contains(u"its owner and group cannot be kept"); }));
    EXPECT_EQ(content(), "[S]\r\nA=1\r\n");
    ASSERT_EQ(chown(QFile::encodeName(file).constData(), kOtherText, kOtherText), 0);
    QFile::setPermissions(file, QFile::ReadOwner);
    EXPECT_TRUE(set(u"A", u"4").ok()) << "the system lets it be written";
    EXPECT_EQ(QFileInfo(file).ownerId(), kOtherText);
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
    const QString good = file;
    file = dir.filePath(QStringLiteral("later/p.ini"));
    EXPECT_FALSE(set(u"A", u"1").isRepeated());
    EXPECT_TRUE(set(u"B", u"1").isRepeated());
    QDir(dir.path()).mkdir(QStringLiteral("later"));
    EXPECT_TRUE(set(u"A", u"1").ok());
    QDir(dir.filePath(QStringLiteral("later"))).removeRecursively();
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

} // namespace
