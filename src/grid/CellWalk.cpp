#include "CellWalk.h"

#include <algorithm>

namespace platform {

namespace {

bool isSeen(const GridModel& grid, const CellPlace& place)
{
    return grid.colWidth(place.col) > 0 && grid.rowHeight(place.row) > 0;
}

bool isEditable(const GridModel& grid, const CellPlace& place)
{
    return isSeen(grid, place) && grid.index(place.row - 1, place.col - 1).flags().testFlag(Qt::ItemIsEditable);
}

bool isUsed(const GridModel& grid, const CellPlace& place)
{
    const Cell& cell = grid.cell(place.row, place.col);
    return isSeen(grid, place) && (!cell.text.isEmpty() || cell.type != CellType::StaticText);
}

// The cells of a grid in the order of a walk, as numbers.
class Track
{
public:
    Track(const GridModel& grid, WalkStep step)
        : m_rows(grid.maxRows()), m_cols(grid.maxCols()), m_step(step), m_length(qint64(m_rows) * m_cols)
    {}

    // Steps to go from one cell to another, 1 to the number of cells.
    qint64 distance(const CellPlace& from, const CellPlace& to) const
    {
        const qint64 ahead = m_step == WalkStep::Left ? number(from) - number(to) : number(to) - number(from);
        return ahead > 0 ? ahead : ahead + m_length;
    }
    CellPlace at(const CellPlace& from, qint64 steps) const
    {
        const qint64 ahead = m_step == WalkStep::Left ? m_length - steps : steps;
        const qint64 target = (number(from) + ahead) % m_length;
        const int line = static_cast<int>(target / lineLength());
        const int place = static_cast<int>(target % lineLength());
        return m_step == WalkStep::Down ? CellPlace{place + 1, line + 1} : CellPlace{line + 1, place + 1};
    }
    qint64 length() const { return m_length; }

private:
    int lineLength() const { return m_step == WalkStep::Down ? m_rows : m_cols; }
    qint64 number(const CellPlace& place) const
    {
        return m_step == WalkStep::Down ? qint64(place.col - 1) * m_rows + place.row - 1
                                        : qint64(place.row - 1) * m_cols + place.col - 1;
    }

    int m_rows;
    int m_cols;
    WalkStep m_step;
    qint64 m_length;
};

std::optional<CellPlace> edge(const GridModel& grid, int row, bool last)
{
    std::optional<CellPlace> found;
    const auto before = [](const CellPlace& a, const CellPlace& b) {
        return a.row != b.row ? a.row < b.row : a.col < b.col;
    };
    const auto cells = grid.ownCells();
    for (const CellPlace& place : cells) {
        if ((row != 0 && place.row != row) || !isUsed(grid, place))
            continue;
        if (!found || (last ? before(*found, place) : before(place, *found)))
            found = place;
    }
    return found;
}

} // namespace

std::optional<CellPlace> nextEditable(const GridModel& grid, const CellPlace& from, WalkStep step)
{
    const Track track(grid, step);
    // Where unset cells can be edited one of them is near; elsewhere only the cells that were set are asked.
    constexpr qint64 kNear = 64;
    for (qint64 steps = 1; steps <= std::min(kNear, track.length()); ++steps) {
        const CellPlace place = track.at(from, steps);
        if (isEditable(grid, place))
            return place;
    }
    std::optional<CellPlace> nearest;
    const auto cells = grid.ownCells();
    for (const CellPlace& place : cells) {
        if (isEditable(grid, place) && (!nearest || track.distance(from, place) < track.distance(from, *nearest)))
            nearest = place;
    }
    return nearest;
}

std::optional<CellPlace> firstUsed(const GridModel& grid, int row)
{
    return edge(grid, row, false);
}

std::optional<CellPlace> lastUsed(const GridModel& grid, int row)
{
    return edge(grid, row, true);
}

} // namespace platform
