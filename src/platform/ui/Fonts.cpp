#include "Fonts.h"

#include <QApplication>
#include <QFontDatabase>

namespace platform {

QFont namedFont(const QString& face, double pointSize, bool bold)
{
    QFont font = QApplication::font();
    if (!face.isEmpty() && QFontDatabase::hasFamily(face))
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
