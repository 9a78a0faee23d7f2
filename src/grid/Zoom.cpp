#include "Zoom.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace platform {

namespace {

// A tenth at a time; coarser where a tenth is hardly seen.
constexpr std::array kZoomLevels{kSmallestZoom, 60,  70,  80,  90,  kPlainZoom, 110,
                                 120,           130, 150, 175, 200, 250,        kLargestZoom};

} // namespace

int zoomAfter(int percent, int steps)
{
    const auto* level = std::lower_bound(kZoomLevels.begin(), kZoomLevels.end(), percent);
    const bool isBetween = level == kZoomLevels.end() || *level != percent;
    const auto place = std::distance(kZoomLevels.begin(), level) + steps - (isBetween && steps > 0 ? 1 : 0);
    return kZoomLevels.at(static_cast<size_t>(std::clamp<std::ptrdiff_t>(place, 0, kZoomLevels.size() - 1)));
}

} // namespace platform
