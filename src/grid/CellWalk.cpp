#include "CellWalk.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>
#include <vector>

namespace platform {

namespace {

bool isSeen(const GridModel& grid, const CellPlace& place)
{
    return grid.colWidth(place.col) > 0 && grid.rowHeight(place.row) > 0;
}

bool isParameter(const GridModel& grid, const CellPlace& place)
{
    const Cell& cell = grid.cell(place.row, place.col);
    return isSeen(grid, place) && (cell.use != CellUse::Decoration || cell.acceptsEntry());
}

template <typename Wanted> std::vector<CellPlace> ownCellsThat(const GridModel& grid, Wanted wanted)
{
    std::vector<CellPlace> places;
    const auto cells = grid.ownCells();
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(places), wanted);
    return places;
}

std::vector<CellPlace> stopsOf(const GridModel& grid)
{
    return ownCellsThat(grid, [&grid](const CellPlace& place) {
        return isSeen(grid, place) && grid.cell(place.row, place.col).isOperable();
    });
}

std::vector<CellPlace> parametersOf(const GridModel& grid)
{
    return ownCellsThat(grid, [&grid](const CellPlace& place) { return isParameter(grid, place); });
}

// The blocks as they lie on the grid: the smallest rectangle around the cells of each.
class BlockMap
{
public:
    explicit BlockMap(const GridModel& grid) : m_grid(grid)
    {
        const auto cells = grid.ownCells();
        for (const CellPlace& place : cells) {
            const int block = grid.cell(place.row, place.col).block;
            if (block == 0)
                continue;
            CellRange& area = m_areas.try_emplace(block, place.row, place.col).first->second;
            area = {std::min(area.row, place.row), std::min(area.col, place.col), std::max(area.row2, place.row),
                    std::max(area.col2, place.col)};
        }
    }

    CellRange areaOf(const CellPlace& place) const
    {
        const auto found = m_areas.find(m_grid.cell(place.row, place.col).block);
        return found == m_areas.end() ? CellRange(place.row, place.col) : found->second;
    }
    // Where the cell comes in a walk through the blocks.
    auto order(const CellPlace& place) const
    {
        const CellRange area = areaOf(place);
        return std::tuple(area.col, area.row, m_grid.cell(place.row, place.col).block, place.col, place.row);
    }

private:
    const GridModel& m_grid;
    std::map<int, CellRange> m_areas;
};

auto byColumns(const CellPlace& place)
{
    return std::tuple(place.col, place.row);
}

auto byRows(const CellPlace& place)
{
    return std::tuple(place.row, place.col);
}

template <typename Order>
std::optional<CellPlace> neighbour(std::vector<CellPlace> places, const CellPlace& from, bool forward, Order order)
{
    if (places.empty())
        return {};
    const auto before = [&](const CellPlace& a, const CellPlace& b) {
        return forward ? order(a) < order(b) : order(b) < order(a);
    };
    std::sort(places.begin(), places.end(), before);
    const auto next = std::upper_bound(places.begin(), places.end(), from, before);
    return next == places.end() ? places.front() : *next;
}

// Cells between two stretches of rows or columns; negative where they share some.
int gap(int first, int last, int otherFirst, int otherLast)
{
    return std::max(otherFirst - last, first - otherLast);
}

// How far a block lies on one side of another: first how far beside the way there, then along it. Nothing when it does
// not lie on that side.
std::optional<std::pair<int, int>> distance(const CellRange& from, const CellRange& to, WalkSide side)
{
    const bool isOnSide = side == WalkSide::Left    ? to.col2 < from.col
                          : side == WalkSide::Right ? to.col > from.col2
                          : side == WalkSide::Up    ? to.row2 < from.row
                                                    : to.row > from.row2;
    if (!isOnSide)
        return {};
    const int rows = gap(from.row, from.row2, to.row, to.row2);
    const int cols = gap(from.col, from.col2, to.col, to.col2);
    const bool isAcross = side == WalkSide::Left || side == WalkSide::Right;
    return std::pair(std::max(isAcross ? rows : cols, 0), isAcross ? cols : rows);
}

std::vector<CellPlace> parametersOfRow(const GridModel& grid, int row)
{
    auto places = parametersOf(grid);
    std::erase_if(places, [row](const CellPlace& place) { return row != 0 && place.row != row; });
    std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) { return byRows(a) < byRows(b); });
    return places;
}

} // namespace

std::optional<CellPlace> nextStop(const GridModel& grid, const CellPlace& from, WalkStep step)
{
    const bool forward = step == WalkStep::Next || step == WalkStep::Down;
    if (step == WalkStep::Down || step == WalkStep::Up)
        return neighbour(stopsOf(grid), from, forward, byColumns);
    const BlockMap blocks(grid);
    return neighbour(stopsOf(grid), from, forward, [&blocks](const CellPlace& place) { return blocks.order(place); });
}

std::optional<CellPlace> nextBlock(const GridModel& grid, const CellPlace& from, WalkSide side)
{
    const BlockMap blocks(grid);
    const CellRange own = blocks.areaOf(from);
    std::optional<CellPlace> best;
    const auto rank = [&](const CellPlace& place) {
        return std::pair(distance(own, blocks.areaOf(place), side), blocks.order(place));
    };
    for (const CellPlace& place : stopsOf(grid)) {
        if (distance(own, blocks.areaOf(place), side) && (!best || rank(place) < rank(*best)))
            best = place;
    }
    return best;
}

std::optional<CellPlace> firstParameter(const GridModel& grid, int row)
{
    const auto places = parametersOfRow(grid, row);
    return places.empty() ? std::nullopt : std::optional(places.front());
}

std::optional<CellPlace> lastParameter(const GridModel& grid, int row)
{
    const auto places = parametersOfRow(grid, row);
    return places.empty() ? std::nullopt : std::optional(places.back());
}

std::optional<CellPlace> parameterTowards(const GridModel& grid, const CellPlace& from, int row)
{
    auto places = parametersOf(grid);
    const auto nearer = [&from](const CellPlace& a, const CellPlace& b) {
        return std::pair(std::abs(a.col - from.col), a.col) < std::pair(std::abs(b.col - from.col), b.col);
    };
    const auto nearest = std::min_element(places.begin(), places.end(), nearer);
    if (nearest == places.end())
        return {};
    const int way = row < from.row ? -1 : 1;
    std::erase_if(places, [&, col = nearest->col](const CellPlace& place) {
        return place.col != col || (place.row - from.row) * way <= 0;
    });
    // On the way the last one, behind the row the first one.
    const auto rank = [&](const CellPlace& place) {
        const int beyond = (place.row - row) * way;
        return std::pair(beyond > 0, std::abs(beyond));
    };
    const auto best = std::min_element(places.begin(), places.end(),
                                       [&](const CellPlace& a, const CellPlace& b) { return rank(a) < rank(b); });
    return best == places.end() ? std::nullopt : std::optional(*best);
}

} // namespace platform
