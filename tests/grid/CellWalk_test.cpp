#include "CellWalk.h"

#include <gtest/gtest.h>

using platform::Cell;
using platform::CellPlace;
using platform::CellType;
using platform::GridModel;
using platform::WalkStep;

namespace {

// A grid of 5 rows and 6 columns whose unset cells are empty labels. A picture has a letter for each cell: "e" edit,
// "L" locked edit, "t" label, "b" button, "." unset; column 4 has no width.
class Walk : public ::testing::Test
{
protected:
    static constexpr int kRows = 5;
    static constexpr int kCols = 6;

    Walk()
    {
        grid.setMaxRows(kRows);
        grid.setMaxCols(kCols);
    }

    void draw(const char* picture)
    {
        Cell plain;
        plain.type = CellType::StaticText;
        grid.resetCells(plain);
        for (int i = 0; i < kRows * kCols; ++i) {
            Cell cell;
            const char sign = picture[i];
            cell.type = sign == 't' ? CellType::StaticText : sign == 'b' ? CellType::Button : CellType::Edit;
            cell.text = sign == 't' ? QStringLiteral("text") : QString();
            cell.locked = sign == 'L';
            if (sign != '.')
                grid.setCell(i / kCols + 1, i % kCols + 1, cell);
        }
        grid.setColWidth(4, 0);
    }

    static std::string text(const std::optional<CellPlace>& place)
    {
        return place ? std::to_string(place->row) + ',' + std::to_string(place->col) : "none";
    }

    GridModel grid;
};

TEST_F(Walk, GoesToTheNextEditableCell)
{
    constexpr const char* kSome = "t.e.tt"
                                  ".Lee.e"
                                  "......"
                                  "be...."
                                  "..e...";
    constexpr const char* kOne = "......"
                                 "..e..."
                                 "......"
                                 "......"
                                 "......";
    constexpr const char* kNone = "t....."
                                  ".LLe.b"
                                  "......"
                                  "......"
                                  "......";
    struct Row
    {
        const char* name;
        const char* picture;
        CellPlace from;
        const char* right;
        const char* left;
        const char* down;
    };
    const Row rows[] = {
        {"from a label", kSome, {1, 1}, "1,3", "5,3", "4,2"},
        {"hidden column and locked cell passed over", kSome, {2, 3}, "2,6", "1,3", "5,3"},
        {"end of a row and of a column", kSome, {2, 6}, "4,2", "2,3", "4,2"},
        {"around the end", kSome, {5, 3}, "1,3", "4,2", "2,6"},
        {"only itself", kOne, {2, 3}, "2,3", "2,3", "2,3"},
        {"none", kNone, {1, 1}, "none", "none", "none"},
    };
    for (const Row& row : rows) {
        draw(row.picture);
        EXPECT_EQ(text(nextEditable(grid, row.from, WalkStep::Right)), row.right) << row.name;
        EXPECT_EQ(text(nextEditable(grid, row.from, WalkStep::Left)), row.left) << row.name;
        EXPECT_EQ(text(nextEditable(grid, row.from, WalkStep::Down)), row.down) << row.name;
    }
}

} // namespace
