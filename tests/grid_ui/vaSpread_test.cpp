#include "Contrast.h"
#include "PaletteColors.h"
#include "SpreadFixture.h"

#include <QHeaderView>
#include <QProxyStyle>
#include <QSet>
#include <QStyleOption>
#include <QWheelEvent>

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

double contrast(const QColor& a, const QColor& b)
{
    return platform::contrastOf(platform::rgbColor(a.red(), a.green(), a.blue()),
                                platform::rgbColor(b.red(), b.green(), b.blue()));
}

TEST_F(Spread, ColoursArePaintedAndTheFocusIsSeenOnEachOfThem)
{
    const std::tuple<const char*, platform::ColorRef, QRgb> rows[] = {
        {"light", 0xFFFFFF, 0xFF308CC6}, {"dark", 0x202020, 0xFF12608F}, {"black", 0x000000, 0xFF000000}};
    for (const auto& [name, back, highlight] : rows) {
        platform::Cell cell = grid.cell(4, 2);
        cell.backColor = back;
        cell.sign = platform::CellSign::Switch;
        grid.setCell(4, 2, cell);
        QPalette colors = spread.palette();
        colors.setColor(QPalette::Highlight, QColor(highlight));
        spread.setPalette(colors);
        spread.setCurrentCell(2, 4);
        ASSERT_TRUE(spread.hasFocus());
        const QRect place = spread.visualRect(spread.currentIndex());
        const QImage image = spread.viewport()->grab().toImage();
        EXPECT_GE(contrast(image.pixelColor(place.left() + 1, place.center().y()),
                           image.pixelColor(place.left() + 4, place.center().y() + 5)),
                  2.5)
            << name;
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

TEST_F(Spread, ZoomScalesWhatIsShownAndNoStoredSize)
{
    const QSize plain(spread.columnWidth(1), spread.rowHeight(1));
    QSignalSpy wanted(&spread, &platform::vaSpread::zoomWanted);
    const QPointF at = spread.viewport()->rect().center();
    for (const int angle : {60, 60, -240}) {
        QWheelEvent turn(at, spread.viewport()->mapToGlobal(at), {}, {0, angle}, {}, Qt::ControlModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(spread.viewport(), &turn);
    }
    EXPECT_EQ(reported(wanted), u"1 -2") << "half a notch makes no step";
    spread.setZoom(200);
    EXPECT_NEAR(spread.columnWidth(1), 2 * plain.width(), plain.width() / 8);
    EXPECT_EQ(spread.rowHeight(1), 2 * plain.height());
    for (const int percent : {50, 70, 90, 110, 130, 175, 300}) {
        grid.setText(1, 2, "Set value high limit");
        grid.setColWidth(2, grid.maxTextColWidth(2));
        spread.setZoom(percent);
        press(1, Qt::Key_F2);
        const double needed = QFontMetricsF(line()->font()).horizontalAdvance("Set value high limit");
        EXPECT_GE(spread.columnWidth(1), needed + 8 * percent / 100) << percent << ": the text is cut";
        leave(line(), Qt::Key_Escape);
    }
}

// Of the ground of a part of the picture with the colour that stands out from it most: the text.
double inkContrast(const QImage& image, const QRect& part)
{
    const QColor ground = image.pixelColor(part.right(), part.center().y()); // the text is at the left
    double most = 1;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            most = std::max(most, contrast(image.pixelColor(x, y), ground));
    }
    return most;
}

// The titles of blocks, the button of a block, changed, refused and plain values: as they are, selected, found, pale.
TEST_F(Spread, TextIsLegibleInEveryScheme)
{
    const std::tuple<const char*, const char*, const char*, const char*> schemes[] = {
        // window, text, button, highlight
        {"#ffffff", "#000000", "#efefef", "#308cc6"},
        {"#1e1e1e", "#e0e0e0", "#353535", "#12608f"},
        {"#808080", "#000000", "#909090", "#404060"},
        {"#000000", "#ffffff", "#000000", "#1aebff"},
        {"#ffffff", "#000000", "#ffffff", "#37006e"}};
    const std::tuple<platform::CellType, platform::ColorRef, platform::ColorRef> cells[] = {
        {platform::CellType::StaticText, 0xC8F3FF, 0}, // a title
        {platform::CellType::Button, 0x8000000F, 0x80000012},
        {platform::CellType::Edit, 0x80000005, 0xFF0000},
        {platform::CellType::Edit, 0x80000005, 0x0000FF},
        {platform::CellType::Edit, 0x80000005, 0x80000008}};
    const QPalette before = QApplication::palette();
    for (const auto& [window, text, button, highlight] : schemes) {
        const QColor face(button);
        QPalette colors(QColor(text), face, face.lighter(), face.darker(), Qt::gray, QColor(text), QColor(text),
                        QColor(window), QColor(window));
        colors.setColor(QPalette::Highlight, QColor(highlight));
        QApplication::setPalette(colors);
        spread.setPalette(colors);
        for (int look = 0; look < 4; ++look) {
            spread.setHighlights(look == 2 ? std::vector<platform::CellPlace>{{6, 2}}
                                           : std::vector<platform::CellPlace>());
            spread.setPale(look == 3);
            spread.setCurrentCell(look == 1 ? 2 : 3, 6);
            for (const auto& [type, back, fore] : cells) {
                if (look == 2 && type == platform::CellType::Button)
                    continue; // a block is no hit
                platform::Cell cell;
                cell.type = type;
                cell.text = "HHHHH";
                cell.backColor = back;
                cell.foreColor = fore;
                cell.font = {{}, 22, true};
                grid.setCell(6, 2, cell);
                const QRect place = spread.visualRect(grid.index(5, 1)).adjusted(4, 4, -4, -4);
                EXPECT_GE(inkContrast(spread.viewport()->grab().toImage(), place), platform::kTextContrast)
                    << window << ' ' << look << ' ' << std::hex << back << ' ' << fore;
            }
        }
    }
    QApplication::setPalette(before);
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
