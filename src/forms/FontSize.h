#pragma once

#include <algorithm>

namespace platform {

constexpr double kSmallestFont = 4; // points
constexpr double kLargestFont = 96;

// A size that came from a file, between the two; fallback for one that is none.
inline double boundedFontSize(double points, double fallback)
{
    return points > 0 ? std::clamp(points, kSmallestFont, kLargestFont) : fallback;
}

} // namespace platform
