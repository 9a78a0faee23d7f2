#include "Colours.h"

#include "Numbers.h"

#include <QStringList>

namespace colours {

namespace {

struct NamedColor
{
    const char* name;
    quint32 value;
};

constexpr int kPlainColors = 17; // the first rows; the others are system colours
constexpr NamedColor kNames[] = {
    {"vbBlack", 0x000000},
    {"vbGray", 0x808080},
    {"vbRed", 0x0000FF},
    {"vbLightRed", 0x8080FF},
    {"vbPink", 0x8080FF},
    {"vbOrange", 0x0080FF},
    {"vbGreen", 0x00FF00},
    {"vbLightGreen", 0x80FF80},
    {"vbYellow", 0x00FFFF},
    {"vbLightYellow", 0x80FFFF},
    {"vbBlue", 0xFF0000},
    {"vbLightBlue", 0xFF8080},
    {"vbMagenta", 0xFF00FF},
    {"vbLightMagenta", 0xFF80FF},
    {"vbCyan", 0xFFFF00},
    {"vbLightCyan", 0xFFFF80},
    {"vbWhite", 0xFFFFFF},
    {"vbScrollBars", 0x80000000},
    {"vbDesktop", 0x80000001},
    {"vbActiveTitleBar", 0x80000002},
    {"vbInactiveTitleBar", 0x80000003},
    {"vbMenuBar", 0x80000004},
    {"vbWindowBackground", 0x80000005},
    {"vbWindowFrame", 0x80000006},
    {"vbMenuText", 0x80000007},
    {"vbWindowText", 0x80000008},
    {"vbTitleBarText", 0x80000009},
    {"vbActiveBorder", 0x8000000A},
    {"vbInactiveBorder", 0x8000000B},
    {"vbApplicationWorkspace", 0x8000000C},
    {"vbHighlight", 0x8000000D},
    {"vbHighlightText", 0x8000000E},
    {"vbButtonFace", 0x8000000F},
    {"vbButtonShadow", 0x80000010},
    {"vbGrayText", 0x80000011},
    {"vbButtonText", 0x80000012},
    {"vbInactiveCaptionText", 0x80000013},
    {"vb3DHighlight", 0x80000014},
    {"vb3DDKShadow", 0x80000015},
    {"vb3DLight", 0x80000016},
    {"vb3DFace", 0x8000000F},
    {"vb3DShadow", 0x80000010},
    {"vbInfoText", 0x80000017},
    {"vbInfoBackground", 0x80000018},
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

} // namespace colours
