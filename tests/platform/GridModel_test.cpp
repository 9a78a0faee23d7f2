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

    static Cell labelled(const QString& text)
    {
        Cell cell;
        cell.text = text;
        return cell;
    }

    GridModel grid;
};

TEST_F(Grid, CellsOutsideAreIgnored)
{
    const QSignalSpy changes(&grid, &GridModel::dataChanged);
    for (const auto& [row, col] : {std::pair{0, 1}, {1, 0}, {11, 1}, {1, 6}, {-1, -1}, {INT_MAX, INT_MIN}}) {
        grid.setCell(row, col, labelled(QStringLiteral("x")));
        grid.setText(row, col, QStringLiteral("x"));
        grid.setBold(row, col, true);
        EXPECT_EQ(grid.cell(row, col).text, QString()) << row << ',' << col;
        EXPECT_FALSE(grid.cell(row, col).font.bold);
    }
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(Grid, CornersAreInside)
{
    for (const auto& [row, col] : {std::pair{1, 1}, {1, 5}, {10, 1}, {10, 5}}) {
        grid.setText(row, col, QStringLiteral("%1-%2").arg(row).arg(col));
        EXPECT_EQ(grid.index(row - 1, col - 1).data().toString(), QStringLiteral("%1-%2").arg(row).arg(col));
    }
}

TEST_F(Grid, EveryCellStartsAsThePrototype)
{
    grid.setText(2, 2, QStringLiteral("old"));
    grid.addFrame({CellRange(1, 1, 2, 2), 0});
    grid.setRowHeight(2, 40);
    Cell prototype;
    prototype.type = CellType::StaticText;
    prototype.backColor = 0x123456;
    grid.resetCells(prototype);
    EXPECT_EQ(grid.cell(2, 2).text, QString());
    EXPECT_EQ(grid.cell(2, 2).type, CellType::StaticText);
    EXPECT_TRUE(grid.frames().isEmpty());
    EXPECT_EQ(grid.rowHeight(2), GridModel::kDefaultRowHeight);
    grid.setText(3, 3, QStringLiteral("one"));
    EXPECT_EQ(grid.cell(3, 3).backColor, 0x123456U) << "a single field leaves the rest as it was";
    EXPECT_EQ(grid.cell(3, 4).text, QString()) << "and the neighbours";
}

struct SizeRow
{
    const char* name;
    int asked;
    int rows;
    int cols;
};

class GridSize : public ::testing::TestWithParam<SizeRow>
{};

TEST_P(GridSize, IsKeptWithinBounds)
{
    GridModel grid;
    grid.setMaxRows(GetParam().asked);
    grid.setMaxCols(GetParam().asked);
    EXPECT_EQ(grid.rowCount(), GetParam().rows);
    EXPECT_EQ(grid.columnCount(), GetParam().cols);
    grid.beginUpdate();
    grid.setText(grid.maxRows(), grid.maxCols(), QStringLiteral("last"));
    grid.endUpdate();
    const bool any = GetParam().rows > 0;
    EXPECT_EQ(grid.cell(grid.maxRows(), grid.maxCols()).text, any ? QStringLiteral("last") : QString());
    EXPECT_EQ(grid.maxTextColWidth(grid.maxCols()) > 4, any) << "four letters, or the margins only";
    EXPECT_EQ(grid.headerData(grid.maxCols() - 1, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty(), !any);
}

INSTANTIATE_TEST_SUITE_P(Sizes, GridSize,
                         ::testing::Values(SizeRow{"Zero", 0, 0, 0}, SizeRow{"Negative", -1, 0, 0},
                                           SizeRow{"MostNegative", INT_MIN, 0, 0}, SizeRow{"One", 1, 1, 1},
                                           SizeRow{"Million", 1000000, GridModel::kMaxRows, GridModel::kMaxCols},
                                           SizeRow{"Most", INT_MAX, GridModel::kMaxRows, GridModel::kMaxCols}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Grid, SmallerGridDropsWhatLiesOutside)
{
    grid.setText(10, 1, QStringLiteral("low"));
    grid.setText(1, 5, QStringLiteral("right"));
    grid.setText(1, 1, QStringLiteral("kept"));
    grid.addFrame({CellRange(9, 1, 10, 2), 0});
    grid.addFrame({CellRange(1, 4, 2, 5), 0});
    grid.addFrame({CellRange(1, 1, 10, 5), 0});
    grid.setRowHeight(10, 40);
    grid.setColWidth(5, 40);
    grid.setMaxRows(4);
    grid.setMaxCols(3);
    EXPECT_EQ(grid.frames().size(), 1) << "only the one that begins inside";
    grid.setMaxRows(10);
    grid.setMaxCols(5);
    EXPECT_EQ(grid.cell(10, 1).text, QString());
    EXPECT_EQ(grid.cell(1, 5).text, QString());
    EXPECT_EQ(grid.cell(1, 1).text, u"kept");
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
        grid.setText(row, 1, QStringLiteral("x"));
    grid.addFrame({CellRange(1, 1), 0});
    grid.setColWidth(1, 20);
    grid.endUpdate();
    EXPECT_EQ(data.count() + frames.count() + sizes.count(), 0) << "the outermost end announces";
    EXPECT_EQ(grid.cell(10, 1).text, u"x") << "readable at once";
    grid.endUpdate();
    ASSERT_EQ(data.count(), 1);
    EXPECT_EQ(data[0][0].toModelIndex(), grid.index(0, 0));
    EXPECT_EQ(data[0][1].toModelIndex(), grid.index(9, 4));
    EXPECT_EQ(frames.count(), 1);
    EXPECT_EQ(sizes.count(), 1);
    grid.endUpdate(); // one too many
    grid.setText(1, 1, QStringLiteral("y"));
    EXPECT_EQ(data.count(), 2) << "single changes are announced again";
}

TEST_F(Grid, NothingChangedIsNothingAnnounced)
{
    grid.setText(1, 1, QStringLiteral("x"));
    const QSignalSpy data(&grid, &GridModel::dataChanged);
    const QSignalSpy sizes(&grid, &GridModel::sizesChanged);
    grid.beginUpdate();
    grid.setText(1, 1, QStringLiteral("x"));
    grid.setLocked(1, 1, false);
    grid.setColWidth(1, GridModel::kDefaultColWidth);
    grid.endUpdate();
    EXPECT_EQ(data.count(), 0);
    EXPECT_EQ(sizes.count(), 0);
}

TEST_F(Grid, SizesKeepWithinTheGridAndAboveNothing)
{
    grid.setColWidth(0, 3);
    grid.setColWidth(6, 99);
    grid.setColWidth(-1, 99);
    grid.setColWidth(2, -5);
    grid.setRowHeight(11, 99);
    grid.setRowHeight(2, -5);
    EXPECT_EQ(grid.colWidth(0), 3) << "the row header";
    EXPECT_EQ(grid.colWidth(6), GridModel::kDefaultColWidth);
    EXPECT_EQ(grid.colWidth(-1), GridModel::kDefaultColWidth);
    EXPECT_EQ(grid.colWidth(2), 0);
    EXPECT_EQ(grid.rowHeight(11), GridModel::kDefaultRowHeight);
    EXPECT_EQ(grid.rowHeight(2), 0);
}

TEST_F(Grid, WidestTextDecidesTheColumn)
{
    EXPECT_LE(grid.maxTextColWidth(1), 2) << "the margins of an empty column";
    grid.setText(1, 1, QStringLiteral("12345"));
    const double narrow = grid.maxTextColWidth(1);
    EXPECT_GT(narrow, 5);
    grid.setText(2, 1, QStringLiteral("設定設定"));
    EXPECT_GT(grid.maxTextColWidth(1), narrow) << "four full-width characters are wider than five narrow ones";
    Cell combo;
    combo.type = CellType::ComboBox;
    combo.comboList = QStringList{QStringLiteral("short"), QStringLiteral("a much longer choice")};
    grid.setCell(1, 2, combo);
    EXPECT_GT(grid.maxTextColWidth(2), 20) << "the list counts, not only what is chosen";
    grid.setText(2, 1, QString());
    EXPECT_EQ(grid.maxTextColWidth(1), narrow);
}

TEST_F(Grid, OnlyUnlockedEditAndComboCellsAreEditable)
{
    struct
    {
        CellType type;
        bool locked;
        bool readOnly;
        bool editable;
    } const rows[] = {{CellType::Edit, false, false, true},        {CellType::ComboBox, false, false, true},
                      {CellType::Edit, true, false, false},        {CellType::ComboBox, true, false, false},
                      {CellType::Edit, false, true, false},        {CellType::ComboBox, false, true, false},
                      {CellType::StaticText, false, false, false}, {CellType::Button, false, false, false}};
    for (const auto& row : rows) {
        Cell cell;
        cell.type = row.type;
        cell.locked = row.locked;
        cell.readOnly = row.readOnly;
        grid.setCell(1, 1, cell);
        EXPECT_EQ(grid.flags(grid.index(0, 0)).testFlag(Qt::ItemIsEditable), row.editable)
            << static_cast<int>(row.type) << row.locked << row.readOnly;
    }
}

TEST_F(Grid, ColumnLetters)
{
    const auto letters = [&](int section) {
        return grid.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString().toStdString();
    };
    EXPECT_EQ(letters(0), "A");
    EXPECT_EQ(letters(25), "Z");
    EXPECT_EQ(letters(26), "AA");
    EXPECT_EQ(letters(701), "ZZ");
    EXPECT_EQ(letters(702), "AAA");
}

} // namespace
