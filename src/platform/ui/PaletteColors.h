#pragma once

#include "SystemColors.h"

#include <QColor>

namespace platform {

// System colours from the desktop's current palette, light or dark.
class PaletteColors final : public SystemColors
{
public:
    ColorRef color(int index) const override;
};

// The colour to paint with; a system colour is looked up in the palette.
QColor paintColor(ColorRef color);

} // namespace platform
