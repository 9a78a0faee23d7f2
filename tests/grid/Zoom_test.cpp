#include "Zoom.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(Zoom, GoesInStepsAndKeepsWithinItsLimits)
{
    const std::tuple<int, int, int> rows[] = {{100, 1, 110},  {100, -1, 90}, {300, 1, 300},  {50, -1, 50},
                                              {250, 5, 300},  {105, 1, 110}, {105, -1, 100}, {7, 1, 50},
                                              {999, -1, 300}, {100, 0, 100}};
    for (const auto& [from, steps, to] : rows)
        EXPECT_EQ(platform::zoomAfter(from, steps), to) << from << ' ' << steps;
}
