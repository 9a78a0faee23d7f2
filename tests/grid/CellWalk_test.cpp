#include "CellWalk.h"

#include "Table.h"

#include <gtest/gtest.h>

using platform::Cell;
using platform::CellType;
using platform::WalkStep;

namespace {

// A grid whose unset cells are empty labels; a picture has a letter for each cell.
void draw(platform::GridModel& grid, const QStringList& picture)
{
    grid.setMaxRows(static_cast<int>(picture.size()));
    grid.setMaxCols(static_cast<int>(picture[0].size()));
    Cell cell;
    cell.type = CellType::StaticText;
    grid.resetCells(cell);
    for (int row = 1; row <= grid.maxRows(); ++row) {
        for (int col = 1; col <= grid.maxCols(); ++col) {
            const QChar sign = picture[row - 1][col - 1];
            cell.type = sign == 't' ? CellType::StaticText : sign == 'b' ? CellType::Button : CellType::Edit;
            cell.text = sign == 't' ? "text" : "";
            cell.locked = sign == 'L';
            if (sign != '.')
                grid.setCell(row, col, cell);
        }
    }
    grid.setColWidth(4, 0);
}

TEST(Walk, GoesToTheNextEditableCell)
{
    for (const QStringList& row : tableRows("grid/walk.tsv")) {
        platform::GridModel grid;
        draw(grid, row[1].split(' '));
        QStringList found;
        for (const WalkStep step : {WalkStep::Right, WalkStep::Left, WalkStep::Down}) {
            const auto place = nextEditable(grid, {row[2][0].digitValue(), row[2][2].digitValue()}, step);
            found << (place ? QString("%1,%2").arg(place->row).arg(place->col) : "none");
        }
        EXPECT_EQ(found, row.mid(3)) << qPrintable(row[0]);
    }
}

} // namespace
