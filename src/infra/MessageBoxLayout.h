#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

// Where the parts of a message box go, all in twips of its inner area. The texts are measured by whoever shows them.
struct MessageBoxLayout
{
    static constexpr int kLabelLeft = 1420;
    static constexpr int kButtonWidth = 1500; // at least
    static constexpr int kButtonHeight = 375; // at least
    static constexpr int kButtonsTop = 1080;  // at least

    struct Measured
    {
        int labelTop;
        QSize label;
        int buttonCount; // 1 to 3
        QSize button;    // all buttons are of one size
    };

    explicit MessageBoxLayout(const Measured& measured);

    QSize form;
    int buttonsTop;
    QVector<int> buttonLefts;

    // The top left corner of a form over its owner: in the middle of its width, in the upper third of its height.
    static QPoint over(const QRect& owner, const QSize& form);

private:
    void placeButtons(int count, int width);
};
