#include "Contrast.h"

#include <gtest/gtest.h>

using platform::contrastOf;
using platform::legibleColor;
using platform::rgbColor;

namespace {

// Ratios as published with the guidelines and their tools.
TEST(Contrast, IsThatOfTheGuidelines)
{
    const std::tuple<platform::ColorRef, platform::ColorRef, double> rows[] = {
        {rgbColor(0, 0, 0), rgbColor(255, 255, 255), 21},         {rgbColor(7, 8, 9), rgbColor(7, 8, 9), 1},
        {rgbColor(119, 119, 119), rgbColor(255, 255, 255), 4.48}, {rgbColor(255, 255, 255), rgbColor(0, 0, 255), 8.59},
        {rgbColor(255, 0, 0), rgbColor(255, 255, 255), 4.00},     {rgbColor(0, 255, 0), rgbColor(0, 0, 0), 15.30}};
    for (const auto& [text, back, ratio] : rows)
        EXPECT_NEAR(contrastOf(text, back), ratio, 0.01);
}

TEST(Contrast, EveryColourIsMadeLegibleOnEveryOther)
{
    constexpr int kPart = 51;
    for (int i = 0; i < 216; ++i) {
        const auto back = rgbColor(i / 36 * kPart, i / 6 % 6 * kPart, i % 6 * kPart);
        for (int k = 0; k < 216; ++k) {
            const auto text = rgbColor(k / 36 * kPart, k / 6 % 6 * kPart, k % 6 * kPart);
            const auto shown = legibleColor(text, back);
            ASSERT_GE(contrastOf(shown, back), platform::kTextContrast) << std::hex << text << " on " << back;
            ASSERT_EQ(shown == text, contrastOf(text, back) >= platform::kTextContrast) << "and no other is changed";
        }
    }
}

} // namespace
