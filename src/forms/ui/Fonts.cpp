#include "Fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>

namespace platform {

namespace {

// Asking the font database takes a tenth of a millisecond, and a grid asks for each of its cells.
bool isInstalled(const QString& face)
{
    static QHash<QString, bool> known;
    const auto found = known.constFind(face);
    return found != known.cend() ? *found : *known.insert(face, QFontDatabase::hasFamily(face));
}

} // namespace

QFont namedFont(const QString& face, double pointSize, bool bold)
{
    QFont font = QApplication::font();
    if (!face.isEmpty() && isInstalled(face))
        font.setFamily(face);
    if (pointSize > 0)
        font.setPointSizeF(pointSize);
    font.setBold(bold);
    return font;
}

QFont fixedFont(double pointSize)
{
    // Not every desktop's settings name a font that keeps what it promises.
    static const QString family = [] {
        const QFont named = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        return QFontInfo(named).fixedPitch() ? named.family() : QStringLiteral("monospace");
    }();
    QFont font(family);
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(pointSize);
    return font;
}

QStringList installedFaces()
{
    return QFontDatabase::families();
}

} // namespace platform
