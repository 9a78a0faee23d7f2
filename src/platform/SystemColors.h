#pragma once

#include <QtGlobal>

namespace platform {

// Colour in the platform's reference layout: red + 256 * green + 65536 * blue. From 0x80000000 on the low byte is the
// index of a system colour.
using ColorRef = quint32;

constexpr ColorRef rgbColor(int red, int green, int blue)
{
    return static_cast<ColorRef>(red) | static_cast<ColorRef>(green) << 8 | static_cast<ColorRef>(blue) << 16;
}

constexpr int kSystemColorCount = 25; // indexes 0 (scroll bars) to 24 (info background)

// The colours behind system-colour indexes. This base class gives the classic light scheme, for programs without a
// window; the window's edition takes them from the current palette.
class SystemColors
{
public:
    virtual ~SystemColors() = default;
    virtual ColorRef color(int index) const; // 0 for an index outside 0..24
};

} // namespace platform
