#include "Contrast.h"

#include <array>
#include <cmath>

namespace platform {

namespace {

constexpr int kSteps = 20;
constexpr double kMiddleLuminance = 0.179; // black and white have the same contrast to it, 4.6

unsigned channelOf(ColorRef color, unsigned place)
{
    return color >> (8 * place) & 0xFFU;
}

// Light of a channel, by its number: the grid asks for the colours of each cell that it paints.
std::array<double, 256> linearLight()
{
    std::array<double, 256> light{};
    for (size_t i = 0; i < light.size(); ++i) {
        const double value = static_cast<double>(i) / 255;
        light[i] = value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return light;
}

double luminanceOf(ColorRef color)
{
    static const std::array<double, 256> kLight = linearLight();
    return 0.2126 * kLight[channelOf(color, 0)] + 0.7152 * kLight[channelOf(color, 1)] +
           0.0722 * kLight[channelOf(color, 2)];
}

double contrastOf(double luminance, double other)
{
    return luminance > other ? (luminance + 0.05) / (other + 0.05) : (other + 0.05) / (luminance + 0.05);
}

// A share of black (end 0) or white (end 255) in it.
ColorRef towards(ColorRef color, double end, double share)
{
    ColorRef result = 0;
    for (unsigned place = 0; place < 3; ++place) {
        const double value = channelOf(color, place);
        result |= static_cast<ColorRef>(std::lround(value + (end - value) * share)) << (8 * place);
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
    const double end = ground > kMiddleLuminance ? 0.0 : 255.0;
    ColorRef shown = text;
    for (int step = 1; step <= kSteps && contrastOf(luminanceOf(shown), ground) < least; ++step)
        shown = towards(text, end, static_cast<double>(step) / kSteps);
    return shown;
}

} // namespace platform
