#include "frmBackups.h"

#include "RecordingMessages.h"
#include "ScreenFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {

// A model with one parameter, three backups of it and one of another model.
class BackupWindow : public ScreenFixture
{
protected:
    BackupWindow()
    {
        box.context.messages = messages;
        load(screenOf(
                 {"Tag=SV\nKXAddress=8000\nDefaultData=7\nDataInfo=0,0,100,<=,<=,0,10\nDataLen=2\nCommRaedSection=Set\n"
                  "CommWriteSection=Set"}),
             "[Set]\nReadCmd1=Direct,8000,2\nWriteCmd1=Direct,8000,2\n");
        kx.setValues({{"SV", "2"}});
        keep(kModelString, "1", "first");
        keep("KX62000000-10A", "5", "other");
        keep(kModelString, "2", "second\x1b");
        keep(kModelString, "ten", "third");
        window.show();
    }
    void keep(const QString& model, const QString& value, const QString& cause)
    {
        box.clock.setNow(box.clock.now().addSecs(1));
        ASSERT_TRUE(BackupStore(library).keep({model, {{"SV", value}}}, {}, cause).ok());
    }

    template <class Widget> Widget& find(const char* name) { return *window.findChild<Widget*>(QLatin1String(name)); }
    QTableView& table() { return find<QTableView>("tblBackups"); }
    QPushButton& loadButton() { return find<QPushButton>("Command1_0"); }
    std::string column(int n)
    {
        QStringList texts;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            texts << table().model()->index(row, n).data().toString();
        return texts.join(u'|').toStdString();
    }

    static inline const QString kModelString = "KX41000000-10A";
    RecordingMessages::Record asked;
    RecordingMessages messages{asked};
    QStringList loaded;
    frmBackups window{kx, [this](const ParameterSet& set) {
                          loaded << set.values.at(0).second;
                          kx.setValues(set.values);
                      }};
};

TEST_F(BackupWindow, ListsSortsAndCopies)
{
    EXPECT_EQ(column(BackupsModel::kCause), "third|second\\x1b|first");
    EXPECT_EQ(column(BackupsModel::kDifferences), "|0|1") << "a set that cannot be used differs in nothing";
    put(BackupStore(library).folder() + "\\KX_000001_20070305-000000-000.par", "");
    find<QCheckBox>("Check1").click();
    EXPECT_EQ(column(BackupsModel::kCause), "third|second\\x1b|other|first");
    EXPECT_EQ(column(BackupsModel::kDifferences), "|0||1");
    EXPECT_EQ(find<QLabel>("Label1").text(), u"Backups: 4   Files that cannot be read: 1");
    table().sortByColumn(BackupsModel::kDifferences, Qt::DescendingOrder);
    EXPECT_EQ(column(BackupsModel::kCause).substr(0, 6), "first|");
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().section(u'\t', 4), u"KX41000000-10A\tfirst\t1\n");
}

TEST_F(BackupWindow, LoadsWhatIsOfTheModelInTheGrid)
{
    find<QCheckBox>("Check1").click();
    table().selectRow(2);
    EXPECT_FALSE(loadButton().isEnabled()) << "of another model";
    QTest::keyClick(&table(), Qt::Key_Return);
    table().selectRow(3);
    EXPECT_TRUE(loadButton().isEnabled());
    loadButton().click();
    EXPECT_EQ(loaded, QStringList{"1"});
    EXPECT_EQ(column(BackupsModel::kDifferences), "|1||0") << "anew against the grid";
    EXPECT_EQ(table().currentIndex().row(), 3);
    EXPECT_TRUE(window.isVisible() && asked.texts.isEmpty());
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_TRUE(asked.texts.value(0).contains(u"is not a valid value for SV")) << qPrintable(asked.texts.join(u'|'));
    EXPECT_EQ(loaded.size(), 1);

    kx.setModel("KX62000000-10A");
    window.refresh();
    EXPECT_FALSE(loadButton().isEnabled());
    find<QCheckBox>("Check1").click();
    EXPECT_EQ(column(BackupsModel::kCause), "other");
}

} // namespace
