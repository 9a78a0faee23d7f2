#pragma once

#include "GridModel.h"

#include <optional>

namespace platform {

// Where the keyboard goes in a grid. Columns and rows of no size are passed over.

enum class WalkStep { Right, Left, Down };

// The next cell that can be edited, around the end of the grid to its start: Right and Left go along the rows, Down
// along the columns. The cell itself comes last; nothing when no cell can be edited.
std::optional<CellPlace> nextEditable(const GridModel& grid, const CellPlace& from, WalkStep step);

// The first or last cell of a row that shows or takes something, by columns; of the whole grid, by rows, for row 0.
std::optional<CellPlace> firstUsed(const GridModel& grid, int row);
std::optional<CellPlace> lastUsed(const GridModel& grid, int row);

} // namespace platform
