#include "SelectionWindows.h"

#include "../dialogs/SelectionFixture.h"
#include "vaSpread.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

const SelectedItem kRange{QStringLiteral("PQRNO"), QStringLiteral("Input type"), QStringLiteral("3")};

class SelectionDialog : public SelectionFixture
{
protected:
    SelectionDialog()
    {
        shippedTables();
        load();
        box.context.languageFile = QStringLiteral("EN.txt");
        owner.show();
    }

    frmMultiSelect* open(const SelectedItem& item = kRange, const char* table = "InputRangeC", bool disable = false)
    {
        windows.open(item, QLatin1String(table), &owner, disable);
        for (frmMultiSelect* window : owner.findChildren<frmMultiSelect*>()) {
            if (window->ID() == QLatin1String(table))
                return window;
        }
        return nullptr;
    }

    static platform::vaSpread& grid(frmMultiSelect& window) { return *window.findChild<platform::vaSpread*>(); }
    static QLineEdit& search(frmMultiSelect& window) { return *window.findChild<QLineEdit*>(); }
    static QPushButton& button(frmMultiSelect& window, int index)
    {
        return *window.findChild<QPushButton*>(QStringLiteral("Command1_%1").arg(index));
    }
    static int row(frmMultiSelect& window) { return grid(window).currentIndex().row() + 1; }
    static QPoint place(frmMultiSelect& window, int number)
    {
        return grid(window).visualRect(grid(window).model()->index(number - 1, 0)).center();
    }

    QWidget owner;
    SelectionWindows windows{library, *this};
};

TEST_F(SelectionDialog, OpensAtTheStoredValue)
{
    frmMultiSelect* window = open();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->objectName(), u"frmMultiSelect");
    EXPECT_EQ(window->windowTitle(), u"Input range: Input type");
    EXPECT_EQ(row(*window), 3);
    EXPECT_TRUE(grid(*window).viewport()->rect().contains(place(*window, 3)));
    EXPECT_FALSE(window->isModal());
    EXPECT_TRUE(owner.isEnabled());
    window = open({QStringLiteral("PQRNO"), QStringLiteral("Input type"), QStringLiteral("99")});
    EXPECT_EQ(row(*window), 0) << "no entry has that value";
    EXPECT_FALSE(button(*window, 0).isEnabled());
    box.context.languageFile = QStringLiteral("JP.txt");
    window = open();
    EXPECT_EQ(window->windowTitle(), QString::fromUtf8("入力種類: Input type"));
    EXPECT_EQ(button(*window, 1).text(), QString::fromUtf8("キャンセル"));
}

struct Way
{
    const char* name;
    std::function<void(SelectionDialog&, frmMultiSelect&)> go;
    const char* set; // the last value; empty: nothing
};

class SelectionWay : public SelectionDialog
{
public:
    using SelectionDialog::button;
    using SelectionDialog::grid;
    using SelectionDialog::place;
    using SelectionDialog::search;
};

TEST_F(SelectionWay, EntriesAreTakenOrLeft)
{
    const auto keysInSearch = [](const char* text, Qt::Key last) {
        return [text, last](SelectionDialog&, frmMultiSelect& w) {
            QTest::keyClicks(&search(w), QLatin1String(text));
            QTest::keyClick(&search(w), last);
        };
    };
    const Way rows[] = {
        {"down and Enter",
         [](auto&, frmMultiSelect& w) {
             QTest::keyClick(&search(w), Qt::Key_Down);
             QTest::keyClick(&search(w), Qt::Key_Return);
         },
         "PQRNO=4"},
        {"double click",
         [](auto&, frmMultiSelect& w) {
             QTest::mouseClick(grid(w).viewport(), Qt::LeftButton, {}, place(w, 5));
             QTest::mouseDClick(grid(w).viewport(), Qt::LeftButton, {}, place(w, 5));
         },
         "PQRNO=5"},
        {"searched", keysInSearch("pt100 -20.", Qt::Key_Return), "PQRNO=13"},
        {"typed in the list",
         [](auto&, frmMultiSelect& w) {
             QTest::keyClick(&grid(w), Qt::Key_W);
             QTest::keyClicks(&search(w), QStringLiteral("5"));
             QTest::keyClick(&search(w), Qt::Key_Return);
         },
         "PQRNO=10"},
        {"Cancel", [](auto&, frmMultiSelect& w) { button(w, 1).click(); }, ""},
    };
    for (const Way& way : rows) {
        set.clear();
        frmMultiSelect* window = open(kRange, "InputRangeC", true);
        EXPECT_FALSE(owner.isEnabled()) << way.name;
        way.go(*this, *window);
        EXPECT_FALSE(window->isVisible()) << way.name;
        EXPECT_TRUE(owner.isEnabled()) << way.name;
        EXPECT_EQ(set.value(0).toStdString(), way.set) << way.name;
    }
}

TEST_F(SelectionDialog, AnEntryTakesEffectWhenTheWindowIsGone)
{
    frmMultiSelect* window = open();
    button(*window, 0).click();
    EXPECT_EQ(set.join(u' '), u"PQRNO=3 BARL shows -200 BARH shows 1000 RNGDOT=0 SVDOT=0 RANGEL=-200 RANGEH=1000 "
                              u"VQLIL=-200 VQLIH=1000");
}

TEST_F(SelectionDialog, PlaceAndColumnsAreKeptForEachTable)
{
    frmMultiSelect* range = open();
    const QSize designed = range->size();
    EXPECT_EQ(grid(*range).verticalScrollBar()->maximum(), 0) << "the whole table is seen at first";
    EXPECT_EQ(grid(*range).horizontalScrollBar()->maximum(), 0);
    range->move(70, 90);
    range->resize(500, 320);
    grid(*range).horizontalHeader()->resizeSection(1, 140);
    const double width = grid(*range).grid()->colWidth(2);
    range->close();
    frmMultiSelect* alarm = open({QStringLiteral("PQKAL1"), {}, QStringLiteral("1")}, "AlarmType");
    EXPECT_NE(alarm->size(), QSize(500, 320));
    EXPECT_EQ(alarm->windowTitle(), u"Alarm type");
    EXPECT_EQ(range->size(), QSize(500, 320));
    EXPECT_NE(designed, QSize(500, 320));
    delete range;
    range = open();
    EXPECT_EQ(range->pos(), QPoint(70, 90));
    EXPECT_EQ(range->size(), QSize(500, 320));
    EXPECT_NEAR(grid(*range).grid()->colWidth(2), width, 0.001);
    EXPECT_EQ(grid(*range).columnWidth(1), 140);
}

TEST_F(SelectionDialog, TheOwnerMayGoWhileAnEntryTakesEffect)
{
    struct Ending : MultiSelectOwner
    {
        void setData(const QString&, const QString&, bool) override {}
        void setVData(const QString&, const QString&, bool) override {}
        void takeEntry(const std::vector<EntrySetting>&) override
        {
            ++calls;
            window.reset();
        }
        int calls = 0;
        std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
    } ending;
    auto* window = new frmMultiSelect(library, ending, QStringLiteral("InputRangeC"), ending.window.get());
    window->showModeless(kRange, ending.window.get(), true);
    QTest::keyClick(&grid(*window), Qt::Key_Return);
    EXPECT_EQ(ending.calls, 1);
}

TEST_F(SelectionDialog, TwoSpellingsAreOneWindowThatIsWaitedFor)
{
    open()->reject();
    QTimer::singleShot(0, &owner, [this] {
        const auto all = owner.findChildren<frmMultiSelect*>();
        ASSERT_EQ(all.size(), 1);
        EXPECT_TRUE(all.first()->isVisible());
        button(*all.first(), 0).click();
    });
    windows.choose(kRange, QStringLiteral("INPUTRANGEC"), &owner);
    ASSERT_FALSE(set.isEmpty()) << "it came back before the entry was taken";
    EXPECT_EQ(set.first(), u"PQRNO=3");
}

TEST_F(SelectionDialog, AnEntryWithoutAValueIsNotTaken)
{
    tables("[T]\nData1=0,1\nName1=one\nData2=0\nName2=two\nName3=Test\n");
    frmMultiSelect* window = open({QStringLiteral("A"), {}, QStringLiteral("1")}, "T");
    grid(*window).setCurrentCell(1, 2);
    EXPECT_FALSE(button(*window, 0).isEnabled());
    QTest::keyClick(&grid(*window), Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(set.isEmpty());
}

} // namespace
