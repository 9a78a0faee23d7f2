#pragma once

namespace platform {

// How large the grid is shown, in percent.
constexpr int kPlainZoom = 100;
constexpr int kSmallestZoom = 50;
constexpr int kLargestZoom = 300;

// The percentage so many steps larger (below 0: smaller) than the given one, within the limits.
int zoomAfter(int percent, int steps);

} // namespace platform
