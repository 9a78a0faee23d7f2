#include "ShippedFiles.h"

#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

using platform::CodePage;

namespace {

class Shipped : public ::testing::Test, protected ScratchFolder
{
protected:
    FolderNotices start() const { return ShippedFiles(path("package"), path("own"), CodePage("CP932")).update(); }
};

TEST_F(Shipped, CopiesFollowThePackageUnlessTheyWereEdited)
{
    for (const QStringList& row : tableRows("infra/upgrades.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        QDir(path("own")).removeRecursively();
        QDir(path("package")).removeRecursively();
        const auto bytes = [&row](int field) { return CodePage("CP932").fromText(row[field]); };
        const QString inPackage = QStringLiteral("package/") + row[1];
        const QString copy = QStringLiteral("own/") + row[1];
        const bool isDeleted = row[3] == u"<deleted>";
        ASSERT_TRUE(put(inPackage, bytes(2)));
        EXPECT_TRUE(start().isEmpty());
        EXPECT_EQ(content(copy), bytes(2));
        QFile::remove(path(copy));
        ASSERT_TRUE(isDeleted || put(copy, bytes(3)));
        EXPECT_TRUE(start().isEmpty()) << "nothing is told of an edit without a new version";
        ASSERT_TRUE(put(inPackage, bytes(4)));
        if (isDeleted)
            QFile::remove(path(copy));

        QStringList places;
        for (const FolderNotice& notice : start())
            places << notice.place << notice.detail;
        EXPECT_EQ(content(copy), bytes(5));
        EXPECT_EQ(places, row[6] == u"told" ? QStringList({path(copy), path(inPackage)}) : QStringList());
        EXPECT_TRUE(start().isEmpty()) << "told once";
        EXPECT_EQ(content(copy), bytes(5));
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
    EXPECT_EQ(names("own/ini"), QStringList({"A.ini", "B.ini"}));
    put("package/ini/A.ini", "new");
    EXPECT_TRUE(start().isEmpty());
    EXPECT_EQ(content("own/ini/A.ini"), "new");
}

TEST_F(Shipped, CopyOfUnknownOriginAndLinkAreTheUsersOwn)
{
    put("package/ini/A.ini", "one");
    put("package/ini/B.ini", "new");
    put("kept.ini", "one");
    put("own/ini/B.ini", "of an older program, or mine");
    ASSERT_TRUE(QFile::link(path("kept.ini"), path("own/ini/A.ini")));
    EXPECT_EQ(start().size(), 2);
    EXPECT_EQ(content("own/ini/B.ini"), "of an older program, or mine");
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
    for (const QString& word : {path("own"), QString("cannot be filled: Not a directory")})
        EXPECT_TRUE(notices[0].english().contains(word)) << qPrintable(notices[0].english());
    EXPECT_EQ(content("own"), "a file in its place");
}

} // namespace
