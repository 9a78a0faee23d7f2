#include "Contrast.h"

#include <cmath>

namespace platform {

namespace {

constexpr int kSteps = 20;
constexpr double kMiddleLuminance = 0.179; // black and white have the same contrast to it, 4.6

double channelOf(ColorRef color, unsigned place)
{
    return static_cast<double>(color >> (8 * place) & 0xFFU) / 255;
}

double linear(double value)
{
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminanceOf(ColorRef color)
{
    return 0.2126 * linear(channelOf(color, 0)) + 0.7152 * linear(channelOf(color, 1)) +
           0.0722 * linear(channelOf(color, 2));
}

double contrastOf(double luminance, double other)
{
    return luminance > other ? (luminance + 0.05) / (other + 0.05) : (other + 0.05) / (luminance + 0.05);
}

// A share of black (end 0) or white (end 1) in it.
ColorRef towards(ColorRef color, double end, double share)
{
    ColorRef result = 0;
    for (unsigned place = 0; place < 3; ++place) {
        const double value = channelOf(color, place);
        result |= static_cast<ColorRef>(std::lround((value + (end - value) * share) * 255)) << (8 * place);
    }
    return result;
}

} // namespace

double contrastOf(ColorRef a, ColorRef b)
{
    return contrastOf(luminanceOf(a), luminanceOf(b));
}

ColorRef legibleColor(ColorRef text, ColorRef background, double least)
{
    const double ground = luminanceOf(background);
    const double end = ground > kMiddleLuminance ? 0.0 : 1.0;
    ColorRef shown = text;
    for (int step = 1; step <= kSteps && contrastOf(luminanceOf(shown), ground) < least; ++step)
        shown = towards(text, end, static_cast<double>(step) / kSteps);
    return shown;
}

} // namespace platform
