#include "FontChooser.h"

#include "Fonts.h"

#include <QFontDialog>

#include <cmath>

namespace {

constexpr double kTenths = 10;
constexpr double kPixelsPerInch = 96;
constexpr double kPointsPerInch = 72;

} // namespace

std::optional<FontRecord> chooseFont(QWidget* owner, const FontRecord& current)
{
    bool chosen = false;
    const QFont font =
        QFontDialog::getFont(&chosen, platform::namedFont(current.face, current.tenthsOfPoint / kTenths), owner);
    if (!chosen)
        return {};
    FontRecord record = current;
    record.face = font.family();
    record.tenthsOfPoint = static_cast<int>(std::lround(font.pointSizeF() * kTenths));
    record.height = -static_cast<int>(std::lround(font.pointSizeF() * kPixelsPerInch / kPointsPerInch));
    record.width = 0;
    return record;
}
