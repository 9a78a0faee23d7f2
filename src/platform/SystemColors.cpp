#include "SystemColors.h"

namespace platform {

ColorRef SystemColors::color(int index) const
{
    static constexpr ColorRef kClassic[kSystemColorCount] = {
        rgbColor(200, 200, 200), // scroll bars
        rgbColor(58, 110, 165),  // desktop
        rgbColor(10, 36, 106),   // active title bar
        rgbColor(128, 128, 128), // inactive title bar
        rgbColor(240, 240, 240), // menu bar
        rgbColor(255, 255, 255), // window background
        rgbColor(100, 100, 100), // window frame
        rgbColor(0, 0, 0),       // menu text
        rgbColor(0, 0, 0),       // window text
        rgbColor(255, 255, 255), // title bar text
        rgbColor(180, 180, 180), // active border
        rgbColor(212, 212, 212), // inactive border
        rgbColor(171, 171, 171), // application workspace
        rgbColor(0, 120, 215),   // highlight
        rgbColor(255, 255, 255), // highlight text
        rgbColor(240, 240, 240), // button face
        rgbColor(160, 160, 160), // button shadow
        rgbColor(109, 109, 109), // grey text
        rgbColor(0, 0, 0),       // button text
        rgbColor(67, 67, 67),    // inactive caption text
        rgbColor(255, 255, 255), // 3-D highlight
        rgbColor(105, 105, 105), // 3-D dark shadow
        rgbColor(227, 227, 227), // 3-D light
        rgbColor(0, 0, 0),       // info text
        rgbColor(255, 255, 225), // info background
    };
    return index < 0 || index >= kSystemColorCount ? 0 : kClassic[index];
}

} // namespace platform
