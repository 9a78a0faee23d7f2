#pragma once

#include <QFont>
#include <QString>

namespace platform {

// Fonts by the names that definition and language files use. A face that the machine lacks ("System" and "FixedSys"
// among them) becomes the desktop's own, whose substitutes have Japanese glyphs; a size of 0 is the desktop's own size.
QFont namedFont(const QString& face, double pointSize = 0, bool bold = false);

// The desktop's font of one width, or another one where the desktop names none.
QFont fixedFont(double pointSize);

// Every face of this machine that can be chosen.
QStringList installedFaces();

} // namespace platform
