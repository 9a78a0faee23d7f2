#include "PaletteColors.h"
#include "SpreadFixture.h"

#include <QHeaderView>
#include <QProxyStyle>
#include <QSet>
#include <QStyleOption>

#include <cmath>
#include <memory>

using platform::GridModel;

namespace {

TEST_F(Spread, SizesFollowTheGridAndItsHeader)
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
    grid.setColHeader(2, "Low end", platform::HAlign::Right);
    EXPECT_EQ(grid.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), u"Low end");
    EXPECT_EQ(grid.headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), u"C");
    spread.showColHeaders();
    spread.horizontalHeader()->resizeSection(1, 2 * spread.columnWidth(1));
    EXPECT_NEAR(grid.colWidth(2), 4 * GridModel::kDefaultColWidth, 0.2) << "dragged";
    grid.setColWidth(2, 20);
    EXPECT_EQ(grid.colWidth(2), 20) << "and not rounded to pixels when it is set";
}

// Relative luminance of the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color)
{
    const auto channel = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) + 0.0722 * channel(color.blueF());
}

TEST_F(Spread, ColoursArePaintedAndTheFocusIsSeenOnEachOfThem)
{
    const std::tuple<const char*, platform::ColorRef, QRgb> rows[] = {
        {"light", 0xFFFFFF, 0xFF308CC6}, {"dark", 0x202020, 0xFF12608F}, {"black", 0x000000, 0xFF000000}};
    for (const auto& [name, back, highlight] : rows) {
        platform::Cell cell = grid.cell(4, 2);
        cell.backColor = back;
        grid.setCell(4, 2, cell);
        QPalette colors = spread.palette();
        colors.setColor(QPalette::Highlight, QColor(highlight));
        spread.setPalette(colors);
        spread.setCurrentCell(2, 4);
        ASSERT_TRUE(spread.hasFocus());
        const QRect place = spread.visualRect(spread.currentIndex());
        const QImage image = spread.viewport()->grab().toImage();
        const double edge = luminance(image.pixelColor(place.left() + 1, place.center().y())) + 0.05;
        const double inner = luminance(image.pixelColor(place.left() + 4, place.center().y() + 5)) + 0.05;
        EXPECT_GE(std::max(edge, inner) / std::min(edge, inner), 2.5) << name;
        type(1, "9");
        const QImage editor = line()->grab().toImage();
        EXPECT_NE(editor.pixelColor(1, 9), editor.pixelColor(4, 9)) << "framed";
        leave(line(), Qt::Key_Escape);
    }
    platform::Cell cell = grid.cell(6, 2);
    cell.backColor = 0x0000FF; // red comes first
    grid.setCell(6, 2, cell);
    EXPECT_EQ(spread.viewport()->grab().toImage().pixelColor(middle(6)), QColor(Qt::red));
    grid.setShown(false);
    EXPECT_NE(spread.viewport()->grab().toImage().pixelColor(middle(6)), QColor(Qt::red)) << "hidden while loading";
    const platform::PaletteColors names;
    EXPECT_NE(names.color(17), names.color(8)) << "grey text is no plain text";
}

// What a style draws buttons with, as far as it keeps pictures by it.
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
};

TEST_F(Spread, PaintingAgainNeedsNoNewPalette)
{
    auto* watch = new PaletteWatch;
    QApplication::setStyle(watch);
    spread.viewport()->grab();
    const QSet<qint64> first = watch->palettes;
    EXPECT_FALSE(first.isEmpty());
    for (int i = 0; i < 3; ++i)
        spread.viewport()->grab();
    EXPECT_EQ(watch->palettes, first);
    QApplication::setStyle("fusion");
}

TEST_F(Spread, AGridMayEndBeforeTheWidget)
{
    auto other = std::make_unique<GridModel>();
    spread.setGrid(other.get());
    other.reset();
    EXPECT_EQ(spread.grid(), nullptr);
    spread.viewport()->grab();
    QTest::keyClick(&spread, Qt::Key_Space);
    click(QPoint(5, 5));
    spread.setGrid(&grid);
    EXPECT_EQ(spread.verticalHeader()->count(), 6);
}

} // namespace
