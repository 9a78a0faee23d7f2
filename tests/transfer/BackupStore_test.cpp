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
        box.clock.setNow(box.clock.now().addDays(-30));
        EXPECT_EQ(
            store.keep({QStringLiteral("KX41000000-10A"), {{QStringLiteral("A"), QString::number(n)}}}, {}, {}).error(),
            QString());
    }
    ASSERT_EQ(files().size(), BackupStore::kKeptPerModel + 1);
    EXPECT_TRUE(files()[0].startsWith(stem + QStringLiteral("000002_2007"))) << qPrintable(files()[0]);
    EXPECT_TRUE(content(store.folder() + u'\\' + files()[BackupStore::kKeptPerModel - 1]).contains("\r\nA=101\r\n"));
    const QString newest = QString::number(BackupStore::kKeptPerModel + 1);
    EXPECT_TRUE(store.keep({QStringLiteral("KX41000000-10A"), {{QStringLiteral("A"), newest}}}, {}, {}).ok());
    EXPECT_EQ(files().size(), BackupStore::kKeptPerModel + 1) << "the newest holds it already";
    EXPECT_EQ(files().last(), stem + QStringLiteral("B_000001_") + stamp);
}

TEST_F(Backups, AnExtensionThatIsNoneIsPar)
{
    for (const char16_t* extension : {u"../x", u"a/b", u"p:q", u"", u" ", u"a\x1b", u"averyveryverylongone"}) {
        const QString text = QString::fromUtf16(extension);
        EXPECT_EQ(store.keep({QStringLiteral("M"), {{QStringLiteral("A"), text.left(3)}}}, text, {}).error(),
                  QString());
    }
    EXPECT_EQ(files().filter(QStringLiteral(".par")).size(), 7) << qPrintable(files().join(u' '));
    EXPECT_EQ(store.keep({QStringLiteral("M"), {}}, QStringLiteral("kxp"), {}).error(), QString());
    EXPECT_EQ(files().filter(QStringLiteral(".kxp")).size(), 1) << qPrintable(files().join(u' '));
}

} // namespace
