#include "CellWalk.h"

#include "Table.h"

#include <gtest/gtest.h>

using platform::Cell;
using platform::CellPlace;
using platform::CellType;
using platform::CellUse;
using platform::WalkSide;
using platform::WalkStep;

namespace {

// A grid whose unset cells are empty labels; a picture has a letter for each cell, another one the number of its block.
void draw(platform::GridModel& grid, const QStringList& picture, const QStringList& blocks)
{
    grid.setMaxRows(static_cast<int>(picture.size()));
    grid.setMaxCols(static_cast<int>(picture[0].size()));
    Cell cell;
    cell.type = CellType::StaticText;
    grid.resetCells(cell);
    for (int row = 1; row <= grid.maxRows(); ++row) {
        for (int col = 1; col <= grid.maxCols(); ++col) {
            const QChar sign = picture[row - 1][col - 1];
            cell.type = sign == 'b'                     ? CellType::Button
                        : QString("tvT").contains(sign) ? CellType::StaticText
                                                        : CellType::Edit;
            cell.use = sign == 'T' ? CellUse::Table : sign == 'v' || sign == 'L' ? CellUse::Value : CellUse::Decoration;
            cell.locked = sign == 'L';
            cell.block = std::max(blocks[row - 1][col - 1].digitValue(), 0);
            if (sign != '.')
                grid.setCell(row, col, cell);
        }
    }
    grid.setColWidth(4, 0);
}

QString text(const std::optional<CellPlace>& place)
{
    return place ? QString("%1,%2").arg(place->row).arg(place->col) : QString("none");
}

TEST(Walk, GoesThroughBlocksColumnsAndParameters)
{
    for (const QStringList& row : tableRows("grid/walk.tsv")) {
        platform::GridModel grid;
        draw(grid, row[1].split(' '), row[2].split(' '));
        const CellPlace from{row[3][0].digitValue(), row[3][2].digitValue()};
        QStringList found;
        for (const WalkStep step : {WalkStep::Next, WalkStep::Previous, WalkStep::Down, WalkStep::Up})
            found << text(nextStop(grid, from, step));
        for (const WalkSide side : {WalkSide::Left, WalkSide::Right, WalkSide::Up, WalkSide::Down})
            found << text(nextBlock(grid, from, side));
        for (const int line : {from.row, 0})
            found << text(firstParameter(grid, line)) << text(lastParameter(grid, line));
        found << text(parameterTowards(grid, from, from.row - 2)) << text(parameterTowards(grid, from, from.row + 2));
        EXPECT_EQ(found, row.mid(4)) << qPrintable(row[0]);
    }
}

} // namespace
