#include "Fonts.h"
#include "SpreadFixture.h"

#include <QApplication>
#include <QHeaderView>

#include <memory>

using platform::Cell;
using platform::CellFont;
using platform::CellType;
using platform::GridModel;
using platform::vaSpread;

namespace {

TEST_F(Spread, EnteredTextIsToldWithColumnAndRow)
{
    auto* line = edit<QLineEdit>(1);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"12.5");
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("7.5"));
    leave(line, Qt::Key_Return);
    ASSERT_EQ(edited.count(), 1);
    EXPECT_EQ(edited[0], (QList<QVariant>{2, 1, QStringLiteral("7.5")}));
    EXPECT_EQ(grid.cell(1, 2).text, u"12.5") << "the grid itself changes no cell";
}

TEST_F(Spread, TypingOverACellStartsAnEdit)
{
    select(1);
    QTest::keyClick(&spread, Qt::Key_9);
    auto* line = spread.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    leave(line, Qt::Key_Tab);
    ASSERT_EQ(edited.count(), 1);
    EXPECT_EQ(edited[0][2].toString(), u"9");
}

TEST_F(Spread, EscapeRestores)
{
    auto* line = edit<QLineEdit>(1);
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, QStringLiteral("999"));
    leave(line, Qt::Key_Escape);
    EXPECT_EQ(edited.count(), 0);
    EXPECT_EQ(grid.index(0, 1).data().toString(), u"12.5");
    line = edit<QLineEdit>(1);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"12.5");
}

TEST_F(Spread, UntouchedEditTellsNothing)
{
    auto* line = edit<QLineEdit>(1);
    ASSERT_NE(line, nullptr);
    leave(line, Qt::Key_Return);
    EXPECT_EQ(edited.count(), 0);
}

TEST_F(Spread, ChoiceIsToldWithItsNumber)
{
    auto* combo = edit<QComboBox>(2);
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->count(), 3);
    EXPECT_EQ(combo->currentText(), u"K");
    QTest::keyClick(combo, Qt::Key_Down);
    leave(combo, Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0], (QList<QVariant>{2, 2, 2}));
    EXPECT_EQ(grid.cell(2, 2).text, u"K");
}

TEST_F(Spread, ComboLeftAsItWasTellsNothing)
{
    for (const char16_t* text : {u"K", u"not in the list", u""}) {
        grid.setText(2, 2, QString::fromUtf16(text));
        auto* combo = edit<QComboBox>(2);
        ASSERT_NE(combo, nullptr);
        leave(combo, Qt::Key_Return);
        EXPECT_EQ(chosen.count(), 0) << "a look at the list is no change";
    }
}

TEST_F(Spread, ComboOpensByF4)
{
    select(2);
    key(Qt::Key_F4);
    EXPECT_NE(spread.viewport()->findChild<QComboBox*>(), nullptr);
}

TEST_F(Spread, ButtonAnswersMouseAndSpace)
{
    click(3);
    ASSERT_EQ(pressed.count(), 1);
    EXPECT_EQ(pressed[0], (QList<QVariant>{2, 3}));
    select(3);
    key(Qt::Key_Space);
    EXPECT_EQ(pressed.count(), 2);
    EXPECT_EQ(spread.viewport()->findChild<QLineEdit*>(), nullptr) << "a button has no text to edit";
}

TEST_F(Spread, OnlyButtonsAreButtons)
{
    for (const int row : {1, 2, 4, 5}) {
        click(row);
        select(row);
        key(Qt::Key_Space);
    }
    EXPECT_EQ(pressed.count(), 0);
}

TEST_F(Spread, LockedAndReadOnlyCellsRefuse)
{
    for (const bool isLocked : {true, false}) {
        for (const int row : {1, 2, 3}) {
            Cell cell = grid.cell(row, 2);
            cell.locked = isLocked;
            cell.readOnly = !isLocked;
            grid.setCell(row, 2, cell);
        }
        EXPECT_EQ(edit<QLineEdit>(1), nullptr) << isLocked;
        EXPECT_EQ(edit<QComboBox>(2), nullptr) << isLocked;
        doubleClick(1);
        EXPECT_EQ(spread.viewport()->findChild<QLineEdit*>(), nullptr) << isLocked;
        click(3);
        select(3);
        key(Qt::Key_Space);
        EXPECT_EQ(pressed.count(), 0) << isLocked;
    }
}

TEST_F(Spread, StaticTextIsNotEditable)
{
    EXPECT_EQ(edit<QLineEdit>(4), nullptr);
    QTest::keyClick(&spread, Qt::Key_9);
    doubleClick(4);
    EXPECT_EQ(spread.viewport()->findChild<QLineEdit*>(), nullptr);
    ASSERT_EQ(doubleClicked.count(), 1) << "a double click is told all the same";
    EXPECT_EQ(doubleClicked[0], (QList<QVariant>{2, 4}));
}

TEST_F(Spread, SizesFollowTheGrid)
{
    const int narrow = spread.columnWidth(1);
    grid.setColWidth(2, 2 * GridModel::kDefaultColWidth);
    EXPECT_NEAR(spread.columnWidth(1), 2 * narrow, 1);
    grid.setRowHeight(3, 30);
    EXPECT_EQ(spread.rowHeight(2), 40) << "30 points";
    grid.setColWidth(1, 0);
    EXPECT_EQ(spread.columnWidth(0), 0);
    grid.setColWidth(3, 2147483647);
    EXPECT_GT(spread.columnWidth(2), spread.columnWidth(1)) << "a damaged width does not vanish";
}

TEST_F(Spread, EditorHasTheCellsFont)
{
    Cell cell = grid.cell(1, 2);
    cell.font = CellFont{QString(), 17, true};
    grid.setCell(1, 2, cell);
    const auto* line = edit<QLineEdit>(1);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->font().pointSizeF(), 17);
    EXPECT_TRUE(line->font().bold());
}

TEST_F(Spread, FaceThatTheMachineLacksBecomesTheDesktops)
{
    const QFont shown = platform::namedFont(QStringLiteral("No Such Face"));
    EXPECT_EQ(shown.family(), QApplication::font().family());
    EXPECT_EQ(shown.pointSizeF(), QApplication::font().pointSizeF());
}

TEST_F(Spread, LargerFontNeedsMoreRoom)
{
    const double plain = grid.maxTextColWidth(2);
    Cell cell = grid.cell(4, 2);
    cell.font.pointSize = 40;
    grid.setCell(4, 2, cell);
    EXPECT_GT(grid.maxTextColWidth(2), plain) << "real fonts measure while the widget shows the grid";
    EXPECT_GT(grid.maxTextRowHeight(4), GridModel::kDefaultRowHeight);
}

TEST_F(Spread, CellColoursArePainted)
{
    Cell cell = grid.cell(5, 2);
    cell.type = CellType::StaticText;
    cell.backColor = 0x0000FF; // red comes first
    grid.setCell(5, 2, cell);
    const QImage image = spread.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(middle(5)), QColor(Qt::red));
    grid.setShown(false);
    EXPECT_NE(spread.viewport()->grab().toImage().pixelColor(middle(5)), QColor(Qt::red)) << "hidden while loading";
}

TEST_F(Spread, LargestGridIsShown)
{
    grid.setMaxRows(1000000);
    grid.setMaxCols(3);
    EXPECT_EQ(spread.verticalHeader()->count(), GridModel::kMaxRows);
    grid.setMaxRows(0);
    spread.viewport()->grab();
    key(Qt::Key_Space);
    EXPECT_EQ(spread.verticalHeader()->count(), 0);
    EXPECT_EQ(pressed.count(), 0);
}

TEST(SpreadLife, GridMayEndBeforeTheWidget)
{
    auto grid = std::make_unique<GridModel>();
    grid->setMaxRows(3);
    grid->setMaxCols(3);
    vaSpread spread;
    spread.setGrid(grid.get());
    spread.show();
    grid.reset();
    EXPECT_EQ(spread.grid(), nullptr);
    spread.viewport()->grab();
    QTest::keyClick(&spread, Qt::Key_Space);
    QTest::mouseClick(spread.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    GridModel next;
    next.setMaxRows(2);
    next.setMaxCols(2);
    spread.setGrid(&next);
    EXPECT_EQ(spread.verticalHeader()->count(), 2);
}

TEST(SpreadLife, GridThatWasReplacedIsLetGo)
{
    GridModel first;
    GridModel second;
    vaSpread spread;
    spread.setGrid(&first);
    second.setMaxRows(1);
    second.setMaxCols(1);
    spread.setGrid(&second);
    {
        GridModel third;
        spread.setGrid(&third);
        spread.setGrid(&second);
    }
    EXPECT_EQ(spread.grid(), &second) << "the end of a grid that is no longer shown changes nothing";
    first.setMaxRows(50);
    EXPECT_EQ(spread.verticalHeader()->count(), 1);
}

} // namespace
