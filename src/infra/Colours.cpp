#include "Colours.h"

#include "Numbers.h"

#include <QStringList>

#include <iterator>

namespace colours {

namespace {

struct NamedColor
{
    const char* name;
    quint32 value;
    const char* description;
};

constexpr int kPlainColors = 17; // the first rows; the others are system colours
constexpr NamedColor kNames[] = {
    {"vbBlack", 0x000000, "Black"},
    {"vbGray", 0x808080, "Gray"},
    {"vbRed", 0x0000FF, "Red"},
    {"vbLightRed", 0x8080FF, "LightRed"},
    {"vbPink", 0x8080FF, "Pink"},
    {"vbOrange", 0x0080FF, "Orange"},
    {"vbGreen", 0x00FF00, "Green"},
    {"vbLightGreen", 0x80FF80, "LightGreen"},
    {"vbYellow", 0x00FFFF, "Yellow"},
    {"vbLightYellow", 0x80FFFF, "LghtYellow"},
    {"vbBlue", 0xFF0000, "Blue"},
    {"vbLightBlue", 0xFF8080, "LightBlue"},
    {"vbMagenta", 0xFF00FF, "Magenta"},
    {"vbLightMagenta", 0xFF80FF, "LightMagenta"},
    {"vbCyan", 0xFFFF00, "Cyan"},
    {"vbLightCyan", 0xFFFF80, "LightCyan"},
    {"vbWhite", 0xFFFFFF, "White"},
    {"vbScrollBars", 0x80000000, "Color of scroll bar"},
    {"vbDesktop", 0x80000001, "Color of desktop"},
    {"vbActiveTitleBar", 0x80000002, "Color of active title bar"},
    {"vbInactiveTitleBar", 0x80000003, "Color of non active title bar"},
    {"vbMenuBar", 0x80000004, "Color of Menu back color"},
    {"vbWindowBackground", 0x80000005, "Color of Window background"},
    {"vbWindowFrame", 0x80000006, "Color of Window frame"},
    {"vbMenuText", 0x80000007, "Color of Menu text"},
    {"vbWindowText", 0x80000008, "Color of Window text"},
    {"vbTitleBarText", 0x80000009, "Caption, color inside size box, and arrow button"},
    {"vbActiveBorder", 0x8000000A, "Color of boundary of active window"},
    {"vbInactiveBorder", 0x8000000B, "Color of boundary of non active window"},
    {"vbApplicationWorkspace", 0x8000000C, "Background color of MDI application"},
    {"vbHighlight", 0x8000000D, "While controlling background color of the item which is selected"},
    {"vbHighlightText", 0x8000000E, "While controlling color of letter of the item which is selected"},
    {"vbButtonFace", 0x8000000F, "Color of surface of command button"},
    {"vbButtonShadow", 0x80000010, "Color of shadow of edge of command button"},
    {"vbGrayText", 0x80000011, "Light-colored indication (use failure) color of letter"},
    {"vbButtonText", 0x80000012, "Color of letter of push button"},
    {"vbInactiveCaptionText", 0x80000013, "Color of letter of non active caption"},
    {"vb3DHighlight", 0x80000014, "Color of emphasis indication of 3-D display element"},
    {"vb3DDKShadow", 0x80000015, "Color of the shadow where the 3-D display element is dense"},
    {"vb3DLight", 0x80000016, "Color of the 3-D display element whose constant vb3Dhighlight is bright next"},
    {"vb3DFace", 0x8000000F, "Color of surface of letter"},
    {"vb3DShadow", 0x80000010, "Color of shadow of letter"},
    {"vbInfoText", 0x80000017, "Color of text of tool hint"},
    {"vbInfoBackground", 0x80000018, "Background color of tool hint"},
};
constexpr quint32 kSystemMark = 0x80000000;

qint32 fromParts(const QString& text, qint32 defaultColor)
{
    const QStringList parts = text.split(u'.');
    qint32 color = 0;
    for (int i = 1; i <= 3; ++i) {
        const auto part = platform::parseInt16(parts.value(i));
        if (!part || *part < 0 || *part > 255)
            return defaultColor;
        color |= *part << (8 * (i - 1));
    }
    return color;
}

} // namespace

qint32 selectVbColor(const QString& name, qint32 defaultColor)
{
    for (const NamedColor& named : kNames) {
        if (name == QLatin1String(named.name))
            return static_cast<qint32>(named.value);
    }
    return defaultColor;
}

qint32 toColorRef(const platform::SystemColors& system, qint32 color)
{
    const auto bits = static_cast<quint32>(color);
    return (bits & kSystemMark) == 0 ? color : static_cast<qint32>(system.color(static_cast<int>(bits & 0xFF)));
}

qint32 fromText(const platform::SystemColors& system, const QString& text, qint32 defaultColor)
{
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(QStringLiteral("vb")))
        return toColorRef(system, selectVbColor(trimmed, defaultColor));
    if (const auto number = platform::parseDouble(trimmed))
        return platform::parseInt32(trimmed).value_or(defaultColor);
    return trimmed.startsWith(QStringLiteral("RGB")) ? fromParts(trimmed, defaultColor) : 0;
}

QString toText(qint32 color)
{
    for (int i = 0; i < kPlainColors; ++i) {
        if (static_cast<quint32>(color) == kNames[i].value)
            return QLatin1String(kNames[i].name);
    }
    return QStringLiteral("&h") + QString::number(static_cast<quint32>(color), 16).toUpper();
}

TableRow tableRow(int slot)
{
    if (slot < 0 || slot >= static_cast<int>(std::size(kNames)))
        return {};
    return {QLatin1String(kNames[slot].name), QLatin1String(kNames[slot].description)};
}

} // namespace colours
