#pragma once

#include "GridModel.h"

#include <optional>

namespace platform {

// Where the keyboard goes in a grid. Columns and rows of no size are passed over; nothing is returned where there is
// nowhere to go.

enum class WalkStep { Next, Previous, Down, Up };
enum class WalkSide { Left, Right, Up, Down };

// The next cell that can be operated: that takes an entry, opens a table or is a button. Next and Previous go through a
// block column by column, then to the block below and to the next column of blocks; Down and Up go along the columns of
// the grid. Around the end to the start; the cell itself comes last.
std::optional<CellPlace> nextStop(const GridModel& grid, const CellPlace& from, WalkStep step);

// The first cell to operate of the nearest block on that side of the cell's own block: one beside it before one that is
// not. A cell without a block is one of its own.
std::optional<CellPlace> nextBlock(const GridModel& grid, const CellPlace& from, WalkSide side);

// The first or last cell of a row that shows a parameter or takes an entry, by columns; of the whole grid, by rows, for
// row 0.
std::optional<CellPlace> firstParameter(const GridModel& grid, int row = 0);
std::optional<CellPlace> lastParameter(const GridModel& grid, int row = 0);

// The parameter next to the row, on the way there from the cell, in its column or the nearest one that has parameters;
// the first one behind the row when there is none on the way.
std::optional<CellPlace> parameterTowards(const GridModel& grid, const CellPlace& from, int row);

} // namespace platform
