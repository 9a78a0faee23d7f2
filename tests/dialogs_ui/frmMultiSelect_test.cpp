#include "SelectionWindows.h"

#include "SelectionFixture.h"
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

const SelectedItem kRange{"PQRNO", "Input type", "3"};

class SelectionDialog : public SelectionFixture
{
protected:
    SelectionDialog()
    {
        shippedTables();
        load();
        box.context.languageFile = "EN.txt";
        owner->show();
    }

    // The window and its parts are kept in the members below.
    void open(const SelectedItem& item = kRange, const QString& table = "InputRangeC")
    {
        window = windows.open(item, table, owner.get(), true);
        ASSERT_NE(window, nullptr);
        grid = window->findChild<platform::vaSpread*>();
        search = window->findChild<QLineEdit*>();
        ok = window->findChild<QPushButton*>("Command1_0");
    }

    QPoint place(int row) { return grid->visualRect(grid->model()->index(row - 1, 0)).center(); }

    void setEntry(const std::vector<EntrySetting>& entry) override
    {
        SelectionFixture::setEntry(entry);
        if (endsOwner)
            owner.reset();
    }

    bool endsOwner = false;
    std::unique_ptr<QWidget> owner = std::make_unique<QWidget>();
    SelectionWindows windows{library, *this};
    frmMultiSelect* window = nullptr;
    platform::vaSpread* grid = nullptr;
    QLineEdit* search = nullptr;
    QPushButton* ok = nullptr;
};

TEST_F(SelectionDialog, EntriesAreTakenOrLeft)
{
    const auto type = [this](const char* text, Qt::Key last) {
        return [this, text, last] {
            QTest::keyClicks(grid, text); // goes to the search
            QTest::keyClick(search, last);
            QTest::keyClick(search, Qt::Key_Return);
        };
    };
    const auto clickTwice = [this] {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, place(5));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, place(5));
    };
    // What is done, and the first value that is set.
    const std::pair<std::function<void()>, QString> rows[] = {
        {[this] { ok->click(); }, "PQRNO=3"},
        {[this] { window->findChild<QPushButton*>("Command1_1")->click(); }, ""},
        {type("", Qt::Key_Down), "PQRNO=4"},
        {type("W", Qt::Key_5), "PQRNO=10"},
        {clickTwice, "PQRNO=5"},
    };
    for (const auto& [act, first] : rows) {
        set.clear();
        open();
        EXPECT_EQ(grid->currentIndex().row() + 1, 3);
        EXPECT_TRUE(grid->viewport()->rect().contains(place(3)));
        EXPECT_EQ(window->windowTitle(), u"Input range: Input type");
        EXPECT_FALSE(owner->isEnabled());
        act();
        EXPECT_TRUE(owner->isEnabled() && !window->isVisible());
        EXPECT_EQ(set.value(0), first);
    }
}

TEST_F(SelectionDialog, WhatHasNoValueIsNotTaken)
{
    open({"PQRNO", "Input type", "99"});
    EXPECT_EQ(grid->currentIndex().row(), -1) << "no entry has that value";
    EXPECT_FALSE(ok->isEnabled());
    for (const auto& [text, isFound] : {std::pair("W5", true), {"x", false}}) {
        QTest::keyClicks(search, text);
        EXPECT_EQ(search->palette().color(QPalette::Text) == window->palette().color(QPalette::Text), isFound) << text;
    }
    tables("[T]\nData1=0,1\nName1=one\nData2=0\nName2=two\nName3=Test\n");
    open({"A", {}, "1"}, "T");
    EXPECT_TRUE(ok->isEnabled());
    grid->setCurrentCell(1, 2);
    EXPECT_FALSE(ok->isEnabled());
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_TRUE(window->isVisible() && set.isEmpty());
    EXPECT_EQ(windows.open({"A", {}, "1"}, "None", owner.get(), false), nullptr);
    EXPECT_TRUE(told.texts.value(0).contains("selection table None")) << qPrintable(told.texts.join('|'));
}

TEST_F(SelectionDialog, PlaceAndColumnsAreKeptForEachTable)
{
    open();
    EXPECT_EQ(grid->verticalScrollBar()->maximum(), 0) << "the whole table is seen at first";
    EXPECT_EQ(grid->horizontalScrollBar()->maximum(), 0);
    window->move(70, 90);
    window->resize(500, 320);
    grid->horizontalHeader()->resizeSection(1, 140);
    window->close();
    open({"PQKAL1", {}, "1"}, "AlarmType");
    EXPECT_NE(window->size(), QSize(500, 320));
    windows.closeAll();
    SelectionWindows anew(library, *this);
    window = anew.open(kRange, "InputRangeC", owner.get(), false);
    EXPECT_TRUE(window->pos() == QPoint(70, 90) && window->size() == QSize(500, 320));
    EXPECT_EQ(window->findChild<platform::vaSpread*>()->columnWidth(1), 140);
}

TEST_F(SelectionDialog, TwoSpellingsAreOneWindowThatIsWaitedFor)
{
    open();
    window->reject();
    QTimer::singleShot(0, owner.get(), [&] { ok->click(); });
    windows.choose(kRange, "INPUTRANGEC", owner.get());
    EXPECT_EQ(set.value(0), u"PQRNO=3") << "it came back before the entry was taken";
}

TEST_F(SelectionDialog, TheOwnerMayGoWhileAnEntryTakesEffect)
{
    endsOwner = true;
    open();
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(owner, nullptr);
}

} // namespace
