#include "CellWalk.h"

#include "Table.h"

#include <gtest/gtest.h>

using platform::Cell;
using platform::CellPlace;
using platform::CellType;
using platform::GridModel;
using platform::WalkStep;

namespace {

constexpr int kRows = 5;
constexpr int kCols = 6;

// A grid whose unset cells are empty labels; a picture has a letter for each cell.
void draw(GridModel& grid, const QString& picture)
{
    grid.setMaxRows(kRows);
    grid.setMaxCols(kCols);
    Cell plain;
    plain.type = CellType::StaticText;
    grid.resetCells(plain);
    for (int i = 0; i < kRows * kCols; ++i) {
        Cell cell;
        const QChar sign = picture[i];
        cell.type = sign == u't' ? CellType::StaticText : sign == u'b' ? CellType::Button : CellType::Edit;
        cell.text = sign == u't' ? QStringLiteral("text") : QString();
        cell.locked = sign == u'L';
        if (sign != u'.')
            grid.setCell(i / kCols + 1, i % kCols + 1, cell);
    }
    grid.setColWidth(4, 0);
}

QString shown(const std::optional<CellPlace>& place)
{
    return place ? QStringLiteral("%1,%2").arg(place->row).arg(place->col) : QStringLiteral("none");
}

TEST(Walk, GoesToTheNextEditableCell)
{
    for (const QStringList& row : tableRows("grid/walk.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        GridModel grid;
        draw(grid, QString(row[1]).remove(u' '));
        const CellPlace from{row[2].section(u',', 0, 0).toInt(), row[2].section(u',', 1).toInt()};
        EXPECT_EQ(shown(nextEditable(grid, from, WalkStep::Right)), row[3]);
        EXPECT_EQ(shown(nextEditable(grid, from, WalkStep::Left)), row[4]);
        EXPECT_EQ(shown(nextEditable(grid, from, WalkStep::Down)), row[5]);
    }
}

} // namespace
