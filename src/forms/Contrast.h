#pragma once

#include "SystemColors.h"

namespace platform {

// Contrast of two colours as the Web Content Accessibility Guidelines 2.1 define it: 1 to 21. Plain colours, no system
// colours.
double contrastOf(ColorRef a, ColorRef b);

constexpr double kTextContrast = 4.5; // that text is to have (level AA)
constexpr double kOffContrast = 3.5;  // of what is off, such as locked cells: grey on white is 3.9

// The colour, or a darker or lighter one of the same hue that has the contrast to the background, up to kTextContrast.
ColorRef legibleColor(ColorRef text, ColorRef background, double least = kTextContrast);

} // namespace platform
