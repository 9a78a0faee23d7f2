#pragma once

#include <QString>

struct Context;

namespace platform {
class GridModel;
}

// Column widths of grids, kept between two runs: one section per grid, named by the caller, in the layout file or in
// another file of its folder (fileName not empty). Column 0, the row headers, is kept too.
namespace columnlayout {

// A width that is no number, negative or absurdly large leaves its column as it is.
void load(Context& context, platform::GridModel& grid, const QString& section, const QString& fileName);
void save(Context& context, const platform::GridModel& grid, const QString& section, const QString& fileName);

// How large the grid of a window is shown, in percent, kept in the window's section of the layout file.
int loadZoom(Context& context, const QString& section);
void saveZoom(Context& context, const QString& section, int percent);

} // namespace columnlayout
