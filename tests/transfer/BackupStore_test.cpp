#include "BackupStore.h"

#include "ScreenFixture.h"

namespace {

class Backups : public ScreenFixture
{
protected:
    QStringList files() const { return box.machine.paths.filesIn(store.folder()); }

    BackupStore store{library};
};

// The clock goes back by a year, old names without a number and other models' files are there.
TEST_F(Backups, NewestStayWhateverTheClockSays)
{
    const QString stem = QStringLiteral("KX41000000-10A_");
    const QString stamp = QStringLiteral("20991231-235959-999.par");
    ASSERT_TRUE(library.MakeDir(store.folder()));
    put(store.folder() + u'\\' + stem + stamp, "old");
    put(store.folder() + u'\\' + stem + QStringLiteral("B_000001_") + stamp, "another model's");
    for (int n = 1; n <= BackupStore::kKeptPerModel + 1; ++n) {
        box.clock.setNow(box.clock.now().addDays(-365));
        EXPECT_EQ(
            store.keep({QStringLiteral("KX41000000-10A"), {{QStringLiteral("A"), QString::number(n)}}}, {}).error(),
            QString());
    }
    ASSERT_EQ(files().size(), BackupStore::kKeptPerModel + 1);
    EXPECT_TRUE(files()[0].startsWith(stem + QStringLiteral("000002_2005"))) << qPrintable(files()[0]);
    EXPECT_TRUE(content(store.folder() + u'\\' + files()[BackupStore::kKeptPerModel - 1]).contains("\r\nA=21\r\n"));
    EXPECT_EQ(files().last(), stem + QStringLiteral("B_000001_") + stamp);
}

TEST_F(Backups, AnExtensionThatIsNoneIsPar)
{
    for (const char16_t* extension : {u"../x", u"a/b", u"p:q", u"", u" ", u"a\x1b", u"averyveryverylongone"}) {
        box.clock.advance(1);
        EXPECT_EQ(store.keep({QStringLiteral("M"), {}}, QString::fromUtf16(extension)).error(), QString());
    }
    EXPECT_EQ(files().filter(QStringLiteral(".par")).size(), 7) << qPrintable(files().join(u' '));
    EXPECT_EQ(store.keep({QStringLiteral("M"), {}}, QStringLiteral("kxp")).error(), QString());
    EXPECT_EQ(files().filter(QStringLiteral(".kxp")).size(), 1) << qPrintable(files().join(u' '));
}

} // namespace
