#include "Fonts.h"

#include <QApplication>
#include <QFontDatabase>
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

QStringList installedFaces()
{
    return QFontDatabase::families();
}

} // namespace platform
