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

// Two models of which one's clock went back; what is no backup, or none that can be read, is not listed.
TEST_F(Backups, AreListedTheNewestFirst)
{
    const QDateTime start = box.clock.now();
    const std::tuple<const char*, int, const char*> rows[] = {
        {"KX1/A", 0, "1"}, {"KX2", 60, "2"}, {"KX1/A", -90, "3; \"=\" [Data]"}, {"KX1_A", 30, " 4 \x1b\\n "}};
    for (const auto& [model, seconds, cause] : rows) {
        box.clock.setNow(start.addSecs(seconds));
        const QString text = QString::fromLatin1(cause);
        EXPECT_EQ(store.keep({QString::fromLatin1(model), {{QStringLiteral("A"), text.left(1)}}}, {}, text).error(),
                  QString());
    }
    put(store.folder() + QStringLiteral("\\KX2_000002_20991231-000000-000.par"), "[Data]\nA=1\n");
    put(store.folder() + QStringLiteral("\\notes.txt"), "[Info]\nMODEL=KX2\n");
    const auto causes = [](const BackupList& list) {
        QStringList texts;
        for (const BackupEntry& entry : list.entries)
            texts << entry.cause;
        return texts.join(u'|').toStdString();
    };
    EXPECT_EQ(causes(store.list()), "2| 4 \x1b\\n |3; \"=\" [Data]|1");
    EXPECT_EQ(causes(store.list(QStringLiteral("KX1/A"))), "3; \"=\" [Data]|1") << "the other one's name is the same";
    EXPECT_EQ(store.list().unreadable, 1);
    const BackupEntry newest = store.list(QStringLiteral("KX2")).entries.at(0);
    EXPECT_EQ(newest.timeText(), start.addSecs(60).toString(QStringLiteral("yyyy/MM/dd HH:mm:ss")));
    EXPECT_TRUE(newest.model == u"KX2" && content(newest.file).contains("A=2"));
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
