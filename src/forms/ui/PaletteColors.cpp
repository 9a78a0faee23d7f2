#include "PaletteColors.h"

#include <QGuiApplication>
#include <QPalette>

namespace platform {

namespace {

constexpr ColorRef kSystemMark = 0x80000000;

QPalette::ColorRole roleOf(int index)
{
    switch (index) {
    case 5: // window background
        return QPalette::Base;
    case 7:  // menu text
    case 9:  // title bar text
    case 19: // inactive caption text
        return QPalette::WindowText;
    case 8: // window text
        return QPalette::Text;
    case 2:  // active title bar
    case 13: // highlight
        return QPalette::Highlight;
    case 14: // highlight text
        return QPalette::HighlightedText;
    case 15: // button face
        return QPalette::Button;
    case 18: // button text
        return QPalette::ButtonText;
    case 3:  // inactive title bar
    case 6:  // window frame
    case 16: // button shadow
        return QPalette::Dark;
    case 17: // grey text
        return QPalette::PlaceholderText;
    case 20: // 3-D highlight
        return QPalette::Light;
    case 21: // 3-D dark shadow
        return QPalette::Shadow;
    case 22: // 3-D light
        return QPalette::Midlight;
    case 23: // info text
        return QPalette::ToolTipText;
    case 24: // info background
        return QPalette::ToolTipBase;
    default:
        return QPalette::Window;
    }
}

} // namespace

QColor legible(const QColor& text, const QColor& background, double least)
{
    return paintColor(legibleColor(rgbColor(text.red(), text.green(), text.blue()),
                                   rgbColor(background.red(), background.green(), background.blue()), least));
}

QColor mixed(const QColor& over, const QColor& under, int percent)
{
    const auto mix = [&](int strong, int weak) { return (strong * percent + weak * (100 - percent)) / 100; };
    return QColor(mix(over.red(), under.red()), mix(over.green(), under.green()), mix(over.blue(), under.blue()));
}

ColorRef PaletteColors::color(int index) const
{
    if (index < 0 || index >= kSystemColorCount)
        return 0;
    const QPalette palette = QGuiApplication::palette();
    QColor color = palette.color(roleOf(index));
    if (color.alphaF() < 1) // grey text is often the plain one, half transparent
        color = mixed(color, palette.color(QPalette::Base), static_cast<int>(color.alphaF() * 100));
    return rgbColor(color.red(), color.green(), color.blue());
}

QColor paintColor(ColorRef color)
{
    const ColorRef plain = (color & kSystemMark) == 0 ? color : PaletteColors().color(static_cast<int>(color & 0xFF));
    return QColor(static_cast<int>(plain & 0xFF), static_cast<int>(plain >> 8U & 0xFF),
                  static_cast<int>(plain >> 16U & 0xFF));
}

} // namespace platform
