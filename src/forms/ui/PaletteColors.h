#pragma once

#include "Contrast.h"

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

// The colour, or a lighter or darker one of the same hue that can be read on the background: definition files name
// colours for a light desktop and must stay legible on a dark one.
QColor legible(const QColor& text, const QColor& background, double least = kTextContrast);

// So many percent of a colour over another. Cells are painted with mixed colours rather than with transparent ones,
// which Qt shares out among threads: for areas as small as cells that takes longer than the painting.
QColor mixed(const QColor& over, const QColor& under, int percent);

} // namespace platform
