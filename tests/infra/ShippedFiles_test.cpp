#include "ShippedFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using platform::CodePage;

namespace {

class Shipped : public ::testing::Test
{
protected:
    QString path(const QString& name) const { return dir.filePath(name); }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    FolderNotices start() const { return ShippedFiles(path("package"), path("own"), CodePage("CP932")).update(); }

    QTemporaryDir dir;
};

struct Upgrade
{
    const char* name;
    const char* file;
    const char* shipped;
    const char* copy; // what became of it; null: deleted
    const char* next;
    const char* expected;
    bool isTold;
};

const Upgrade kUpgrades[] = {
    {"untouched", "ini/A.ini", "one", "one", "two", "two", false},
    {"edited", "ini/A.ini", "one", "mine", "two", "mine", true},
    {"deleted", "ini/A.ini", "one", nullptr, "two", "two", false},
    {"already there", "ini/A.ini", "one", "two", "two", "two", false},
    {"definitions take no additions", "ini/A.ini", "[S]\nA=1\n", "[S]\nA=1\nB=2\n", "[S]\nA=3\n", "[S]\nA=1\nB=2\n",
     true},
    {"added text stays", "Lang/E.txt", "[L]\r\nA=a\r\n", "[L]\r\nA=a\r\nB=b\r\n[frmX]\r\nFont=F\r\n",
     "[L]\r\nA=new\r\n", "[L]\r\nA=new\r\nB=b\r\n[frmX]\r\nFont=F\r\n", false},
    {"untranslated text gives way", "Lang/E.txt", "[L]\nA=a\n", "[L]\nA=a\nOpen=Open\n", "[L]\nA=a\nOpen=Auf\n",
     "[L]\nA=a\nOpen=Auf\n", false},
    {"own translation of a missing text", "Lang/E.txt", "[L]\nA=a\n", "[L]\nA=a\nOpen=Los\n", "[L]\nA=a\nOpen=Auf\n",
     "[L]\nA=a\nOpen=Los\n", true},
    {"edited text", "Lang/E.txt", "[L]\nA=a\nB=b\n", "[L]\nA=a\nB=mine\n", "[L]\nA=a\nB=c\n", "[L]\nA=a\nB=mine\n",
     true},
    {"own comment", "Lang/E.txt", "[L]\nA=a\n", "; mine\n[L]\nA=a\n", "[L]\nA=b\n", "; mine\n[L]\nA=a\n", true},
    {"code page", "Lang/J.txt", "[L]\nA=\x8A\x4A\n", "[L]\nA=\x8A\x4A\nB=\x95\x5C\n", "[L]\nA=\x95\x5C\n",
     "[L]\nA=\x95\x5C\nB=\x95\x5C\n", false},
    {"upgrade that was killed before it was noted", "Lang/E.txt", "[L]\nA=a\n", "[L]\nA=new\nB=b\n", "[L]\nA=new\n",
     "[L]\nA=new\nB=b\n", false},
};

TEST_F(Shipped, CopiesFollowThePackageUnlessTheyWereEdited)
{
    for (const Upgrade& row : kUpgrades) {
        SCOPED_TRACE(row.name);
        QDir(path("own")).removeRecursively();
        QDir(path("package")).removeRecursively();
        const QString inPackage = QStringLiteral("package/") + QLatin1String(row.file);
        const QString copy = QStringLiteral("own/") + QLatin1String(row.file);
        put(inPackage, row.shipped);
        EXPECT_TRUE(start().isEmpty());
        EXPECT_EQ(content(copy), row.shipped);
        QFile::remove(path(copy));
        if (row.copy != nullptr)
            put(copy, row.copy);
        EXPECT_TRUE(start().isEmpty()) << "nothing is told of an edit without a new version";
        put(inPackage, row.next);
        if (row.copy == nullptr)
            QFile::remove(path(copy));

        const FolderNotices notices = start();
        EXPECT_EQ(content(copy), row.expected);
        ASSERT_EQ(notices.size(), row.isTold ? 1 : 0);
        if (row.isTold) {
            EXPECT_EQ(notices[0].place, path(copy));
            EXPECT_EQ(notices[0].detail, path(inPackage));
        }
        EXPECT_TRUE(start().isEmpty()) << "told once";
        EXPECT_EQ(content(copy), row.expected);
    }
}

TEST_F(Shipped, KilledFillIsCompleted)
{
    put("package/ini/A.ini", "a");
    put("package/ini/B.ini", "b");
    put("own/ini/A.ini", "a"); // copied, not noted yet
    put("own/ini/.vorlant-save-0123456789abcdef", "half of");
    EXPECT_TRUE(start().isEmpty());
    EXPECT_EQ(content("own/ini/B.ini"), "b");
    EXPECT_EQ(QDir(path("own/ini")).entryList(QDir::Files | QDir::Hidden), QStringList({"A.ini", "B.ini"}));
    put("package/ini/A.ini", "new");
    EXPECT_TRUE(start().isEmpty());
    EXPECT_EQ(content("own/ini/A.ini"), "new");
}

TEST_F(Shipped, CopyInAFolderOfUnknownOriginIsKept)
{
    put("package/ini/A.ini", "new");
    put("own/ini/A.ini", "of an older program, or mine");
    EXPECT_EQ(start().size(), 1);
    EXPECT_EQ(content("own/ini/A.ini"), "of an older program, or mine");
}

TEST_F(Shipped, LinkIsTheUsersOwn)
{
    put("package/ini/A.ini", "one");
    put("kept.ini", "one");
    QDir().mkpath(path("own/ini"));
    ASSERT_TRUE(QFile::link(path("kept.ini"), path("own/ini/A.ini")));
    start();
    put("package/ini/A.ini", "two");
    EXPECT_EQ(start().size(), 1);
    EXPECT_EQ(content("kept.ini"), "one");
    EXPECT_TRUE(QFileInfo(path("own/ini/A.ini")).isSymLink());
}

TEST_F(Shipped, FolderThatCannotBeMadeIsToldOnce)
{
    put("package/ini/A.ini", "a");
    put("package/ini/B.ini", "b");
    put("own", "a file in its place");
    const FolderNotices notices = start();
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].english().contains(path("own"))) << qPrintable(notices[0].english());
    EXPECT_TRUE(notices[0].english().contains(QStringLiteral("cannot be filled: Not a directory")))
        << qPrintable(notices[0].english());
    EXPECT_EQ(content("own"), "a file in its place");
}

} // namespace
