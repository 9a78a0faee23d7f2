#include "GridModel.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using platform::Cell;
using platform::CellRange;
using platform::CellType;
using platform::GridModel;

namespace {

class Grid : public ::testing::Test
{
protected:
    Grid()
    {
        grid.setMaxRows(10);
        grid.setMaxCols(5);
    }

    GridModel grid;
};

TEST_F(Grid, CellsOutsideAreIgnored)
{
    const QSignalSpy changes(&grid, &GridModel::dataChanged);
    Cell named;
    named.text = "x";
    for (const auto& [row, col] : {std::pair{0, 1}, {1, 0}, {11, 1}, {1, 6}, {-1, -1}, {INT_MAX, INT_MIN}}) {
        grid.setCell(row, col, named);
        grid.setText(row, col, "x");
        grid.setBold(row, col, true);
        EXPECT_EQ(grid.cell(row, col).text, QString()) << row << ',' << col;
        EXPECT_FALSE(grid.cell(row, col).font.bold);
    }
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(Grid, ShowsWhatIsNotSeenAndKeepsIt)
{
    Cell cell;
    cell.text = "a\x1b\r\nb";
    cell.toolTip = "\u202E";
    grid.setCell(1, 1, cell);
    grid.setColHeader(1, "\x01", platform::HAlign::Left);
    const QModelIndex at = grid.index(0, 0);
    EXPECT_EQ(at.data(Qt::DisplayRole).toString(), u"a\\x1b\nb");
    EXPECT_EQ(at.data(Qt::ToolTipRole).toString(), u"<U+202E>");
    EXPECT_EQ(grid.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"\\x01");
    EXPECT_EQ(at.data(Qt::EditRole).toString(), cell.text);
    EXPECT_EQ(grid.cell(1, 1).text, cell.text);
}

TEST_F(Grid, SizeIsKeptWithinBounds)
{
    const std::tuple<int, int, int> rows[] = {
        {0, 0, 0}, {-1, 0, 0}, {1, 1, 1}, {1000000, GridModel::kMaxRows, GridModel::kMaxCols}};
    for (const auto& [asked, maxRows, maxCols] : rows) {
        SCOPED_TRACE(asked);
        grid.setMaxRows(asked);
        grid.setMaxCols(asked);
        EXPECT_EQ(grid.rowCount(), maxRows);
        EXPECT_EQ(grid.columnCount(), maxCols);
        grid.beginUpdate();
        grid.setText(maxRows, maxCols, "last");
        grid.endUpdate();
        EXPECT_EQ(grid.cell(maxRows, maxCols).text, maxRows > 0 ? "last" : "");
        EXPECT_EQ(grid.maxTextColWidth(maxCols) > 4, maxRows > 0) << "four letters, or the margins only";
    }
}

TEST_F(Grid, SmallerGridDropsWhatLiesOutside)
{
    for (const auto& [row, col] : {std::pair(10, 1), {1, 5}, {1, 1}})
        grid.setText(row, col, "x");
    for (const CellRange& range : {CellRange(9, 1, 10, 2), CellRange(1, 4, 2, 5), CellRange(1, 1, 10, 5)})
        grid.addFrame({range, 0});
    grid.setRowHeight(10, 40);
    grid.setColWidth(5, 40);
    grid.setMaxRows(4);
    grid.setMaxCols(3);
    EXPECT_EQ(grid.frames().size(), 1) << "only the one that begins inside";
    grid.setMaxRows(10);
    grid.setMaxCols(5);
    EXPECT_EQ(grid.cell(10, 1).text + grid.cell(1, 5).text + grid.cell(1, 1).text, u"x") << "only the last one is kept";
    EXPECT_EQ(grid.rowHeight(10), GridModel::kDefaultRowHeight);
    EXPECT_EQ(grid.colWidth(5), GridModel::kDefaultColWidth);
}

TEST_F(Grid, BatchIsAnnouncedOnce)
{
    const QSignalSpy data(&grid, &GridModel::dataChanged);
    const QSignalSpy frames(&grid, &GridModel::framesChanged);
    const QSignalSpy sizes(&grid, &GridModel::sizesChanged);
    grid.beginUpdate();
    grid.beginUpdate();
    for (int row = 1; row <= 10; ++row)
        grid.setText(row, 1, "x");
    grid.addFrame({CellRange(1, 1), 0});
    grid.setColWidth(1, 20);
    grid.endUpdate();
    EXPECT_EQ(data.count() + frames.count() + sizes.count(), 0) << "the outermost end announces";
    EXPECT_EQ(grid.cell(10, 1).text, u"x") << "readable at once";
    grid.endUpdate();
    ASSERT_EQ(data.count(), 1);
    EXPECT_EQ(data[0][0].toModelIndex(), grid.index(0, 0));
    EXPECT_EQ(data[0][1].toModelIndex(), grid.index(9, 4));
    EXPECT_TRUE(frames.count() == 1 && sizes.count() == 1);
    grid.endUpdate(); // one too many
    grid.setText(1, 1, "y");
    EXPECT_EQ(data.count(), 2) << "single changes are announced again";
}

} // namespace
