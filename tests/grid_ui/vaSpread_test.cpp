#include "PaletteColors.h"
#include "SpreadFixture.h"

#include <QHeaderView>
#include <QProxyStyle>
#include <QSet>
#include <QStyleOption>

#include <memory>

using platform::Cell;
using platform::CellType;
using platform::GridModel;
using platform::vaSpread;

namespace {

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

// What a style draws with, as far as it keeps pictures by it.
class PaletteWatch : public QProxyStyle
{
public:
    mutable QSet<qint64> palettes;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        palettes << option->palette.cacheKey();
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        palettes << option->palette.cacheKey();
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
};

TEST_F(Spread, PaintingAgainNeedsNoNewPalette)
{
    auto* watch = new PaletteWatch;
    QApplication::setStyle(watch);
    spread.viewport()->grab();
    const QSet<qint64> first = watch->palettes;
    EXPECT_GE(first.size(), 2);
    for (int i = 0; i < 3; ++i)
        spread.viewport()->grab();
    EXPECT_EQ(watch->palettes, first);
    QApplication::setStyle(QStringLiteral("fusion"));
}

TEST(PaletteColors, GreyTextIsNoPlainText)
{
    const platform::PaletteColors colors;
    EXPECT_NE(colors.color(17), colors.color(8));
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

} // namespace
