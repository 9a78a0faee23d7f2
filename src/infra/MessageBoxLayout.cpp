#include "MessageBoxLayout.h"

#include <algorithm>

namespace {

constexpr int kSideMargins = 1000;
constexpr int kBelowLabel = 255;
constexpr int kBelowButtons = 120;

// Three buttons stand 1600 apart, two 1800; wider ones keep the same gap between them.
constexpr int kStepOfThree = 1600;
constexpr int kMarginOfThree = 150;
constexpr int kStepOfTwo = 1800;
constexpr int kMarginOfTwo = 300;

int step(int designed, int width)
{
    return designed + std::max(0, width - MessageBoxLayout::kButtonWidth);
}

} // namespace

MessageBoxLayout::MessageBoxLayout(const Measured& measured)
    : buttonsTop(std::max(kButtonsTop, measured.labelTop + measured.label.height() + kBelowLabel))
{
    form.setWidth(std::max(measured.label.width() + kLabelLeft + kSideMargins,
                           measured.buttonCount * measured.button.width() + kSideMargins));
    form.setHeight(buttonsTop + measured.button.height() + kBelowButtons);
    placeButtons(measured.buttonCount, measured.button.width());
}

void MessageBoxLayout::placeButtons(int count, int width)
{
    if (count == 3) {
        const int first = (form.width() - (3 * width + kMarginOfThree)) / 2;
        const int apart = step(kStepOfThree, width);
        buttonLefts = {first, first + apart, first + 2 * apart};
    } else if (count == 2) {
        const int first = (form.width() - (2 * width + kMarginOfTwo)) / 2;
        buttonLefts = {first, first + step(kStepOfTwo, width)};
    } else {
        buttonLefts = {(form.width() - width) / 2};
    }
}

QPoint MessageBoxLayout::over(const QRect& owner, const QSize& form)
{
    return {owner.left() + (owner.width() - form.width()) / 2, owner.top() + (owner.height() - form.height()) / 3};
}
