#include "FilePaths.h"

#include "FolderName.h"

#include <algorithm>

namespace filepaths {

namespace {

constexpr qsizetype kMinDirLength = 4;

bool holdsAny(const QString& text, const QString& characters)
{
    return std::any_of(text.cbegin(), text.cend(), [&](QChar c) { return characters.contains(c); });
}

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isLocal(platform::PathMap::DriveType type)
{
    return type == platform::PathMap::DriveType::Removable || type == platform::PathMap::DriveType::Fixed;
}

} // namespace

bool makeDir(const platform::Machine& machine, const QString& pathGiven)
{
    QString path = pathGiven;
    if (!path.contains(u':'))
        path = withBackslash(machine.folders.program()) + path;
    const bool isPackaged = machine.folders.isPackaged() && path.startsWith(withBackslash(machine.folders.program()));
    const bool refused = isPackaged || !isPathName(machine, path) ||
                         !isLocal(machine.paths.driveType(path.left(2) + u'\\')) ||
                         path.contains(QStringLiteral("\\\\")) || path.trimmed().size() < kMinDirLength;
    if (refused)
        return false;
    if (path.endsWith(u'\\'))
        path.chop(1);
    auto known = path.size();
    while (known > 0 && !machine.paths.dirExists(path.left(known) + (known == 2 ? QStringLiteral("\\") : QString())))
        known = path.lastIndexOf(u'\\', known - 1);
    if (known <= 0)
        return false;
    while (known < path.size()) {
        const auto next = path.indexOf(u'\\', known + 1);
        known = next < 0 ? path.size() : next;
        if (!machine.paths.makeOneDir(path.left(known)))
            return false;
    }
    return true;
}

QString fileTitle(const QString& path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

QString fileExtension(const QString& name)
{
    const auto point = name.lastIndexOf(u'.');
    return point < 0 ? QString() : name.mid(point + 1);
}

QString fileTitleWithoutExt(const QString& path)
{
    const QString title = fileTitle(path);
    const auto point = title.lastIndexOf(u'.');
    return point < 0 ? title : title.left(point);
}

QString dirName(const QString& path)
{
    const auto slash = path.lastIndexOf(u'\\');
    return slash < 0 ? path : path.left(slash);
}

bool isFileName(const QString& name, int counterMode)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || holdsAny(trimmed, QStringLiteral("\\/:*?\"<>| ")))
        return false;
    return counterMode != 1 || !trimmed.contains(QStringLiteral("FCCOUNTER"), Qt::CaseInsensitive);
}

bool isFileNameWithin(const platform::Machine& machine, const QString& name, int counterMode, int lengthLimit)
{
    if (!isFileName(name, counterMode))
        return false;
    return lengthLimit == 0 || machine.codePage.fromText(fileTitle(name)).size() <= lengthLimit;
}

bool isPathName(const platform::Machine& machine, const QString& path)
{
    const QString trimmed = path.trimmed();
    if (trimmed.isEmpty() || machine.codePage.fromText(trimmed).size() > kMaxPathBytes)
        return false;
    if (!isLetter(trimmed[0]) && !(trimmed.startsWith(QStringLiteral("\\\\")) && trimmed.size() > 2))
        return false;
    return trimmed.indexOf(u':', 2) < 0 && !holdsAny(trimmed, QStringLiteral("/*?\"<>|"));
}

bool isLocalDrive(const platform::Machine& machine, const QString& path)
{
    QString root = path.left(3);
    if (root.size() < 3)
        root += u'\\';
    return isLocal(machine.paths.driveType(root));
}

} // namespace filepaths
