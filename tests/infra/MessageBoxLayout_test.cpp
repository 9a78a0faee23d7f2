#include "MessageBoxLayout.h"

#include <gtest/gtest.h>

namespace {

struct LayoutRow
{
    const char* name;
    MessageBoxLayout::Measured measured;
    QSize form;
    int buttonsTop;
    QVector<int> lefts;
};

class Layout : public ::testing::TestWithParam<LayoutRow>
{};

TEST_P(Layout, IsThatOfTheMeasuredParts)
{
    const LayoutRow& row = GetParam();
    const MessageBoxLayout layout(row.measured);
    EXPECT_EQ(layout.form, row.form) << layout.form.width() << "x" << layout.form.height();
    EXPECT_EQ(layout.buttonsTop, row.buttonsTop);
    EXPECT_EQ(layout.buttonLefts, row.lefts);
}

// Worked out by hand: width = label + 1420 + 1000 or buttons + 1000; the buttons stand 255 under the label and 120 over
// the end.
INSTANTIATE_TEST_SUITE_P(
    Texts, Layout,
    ::testing::Values(
        LayoutRow{"ShortNotice", {360, {1000, 240}, 1, {1500, 375}}, {3420, 1575}, 1080, {960}},
        LayoutRow{"LongPromptWidens", {360, {6000, 240}, 1, {1500, 375}}, {8420, 1575}, 1080, {3460}},
        LayoutRow{"TwoButtons", {360, {2000, 240}, 2, {1500, 375}}, {4420, 1575}, 1080, {560, 2360}},
        LayoutRow{"ThreeButtonsWiden", {360, {100, 240}, 3, {1500, 375}}, {5500, 1575}, 1080, {425, 2025, 3625}},
        LayoutRow{"HalvesAreCut", {360, {2001, 240}, 2, {1500, 375}}, {4421, 1575}, 1080, {560, 2360}},
        LayoutRow{"HighMessage", {360, {1000, 900}, 1, {1500, 375}}, {3420, 2010}, 1515, {960}},
        LayoutRow{"WideButtonsKeepTheirGap", {360, {100, 240}, 3, {2000, 450}}, {7000, 1650}, 1080, {425, 2525, 4625}},
        LayoutRow{"TwoWideButtons", {360, {100, 240}, 2, {2000, 375}}, {5000, 1575}, 1080, {350, 2650}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MessageBoxPosition, IsOverTheOwner)
{
    struct Row
    {
        QRect owner;
        QSize form;
        QPoint at;
    };
    for (const Row& row : {Row{{0, 0, 15000, 9000}, {3000, 1500}, {6000, 2500}},
                           Row{{1500, 900, 15001, 9000}, {3000, 1500}, {7500, 3400}},
                           Row{{1000, 1000, 2000, 1000}, {3001, 1601}, {500, 800}}})
        EXPECT_EQ(MessageBoxLayout::over(row.owner, row.form), row.at);
}

} // namespace
