#include "PathMap.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <sys/statvfs.h>

namespace platform {

namespace {

// The entry of a folder that has this name in any case; the name itself when there is none.
QString entryOf(const QString& folder, const QString& name)
{
    if (name == u"." || name == u".." || QFileInfo::exists(folder + u'/' + name))
        return name;
    const QStringList entries =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    }
    return name;
}

QString withoutEndSlash(QString folder)
{
    while (folder.size() > 1 && folder.endsWith(u'/'))
        folder.chop(1);
    return folder;
}

} // namespace

PathMap::PathMap()
{
    m_drives.insert(u'Z', QStringLiteral("/"));
}

void PathMap::mount(QChar letter, const QString& machineFolder)
{
    m_drives.insert(letter.toUpper(), withoutEndSlash(QDir::cleanPath(machineFolder)));
}

QString PathMap::toMachine(const QString& desktopPath) const
{
    if (desktopPath.size() < 2 || desktopPath[1] != u':')
        return {};
    const auto drive = m_drives.constFind(desktopPath[0].toUpper());
    if (drive == m_drives.cend())
        return {};
    QString machine = *drive == u"/" ? QString() : *drive;
    const QStringList parts = desktopPath.mid(2).replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts);
    const QString direct = machine + u'/' + parts.join(u'/');
    if (QFileInfo::exists(direct))
        return withoutEndSlash(direct);
    for (const QString& part : parts)
        machine += u'/' + entryOf(machine.isEmpty() ? QStringLiteral("/") : machine, part);
    return machine.isEmpty() ? QStringLiteral("/") : machine;
}

QString PathMap::toMachineForSaving(const QString& desktopPath) const
{
    const auto slash = desktopPath.lastIndexOf(u'\\');
    const QString folder = slash < 0 ? QString() : toMachine(desktopPath.left(slash));
    return folder.isEmpty() ? toMachine(desktopPath) : QDir(folder).filePath(desktopPath.mid(slash + 1));
}

bool PathMap::hasDesktopName(const QString& machinePath)
{
    static const QString kRefused = QStringLiteral(":*?\"<>|");
    const QString name = machinePath.mid(machinePath.lastIndexOf(u'/') + 1);
    return !machinePath.contains(u'\\') &&
           std::none_of(name.cbegin(), name.cend(), [](QChar c) { return kRefused.contains(c); });
}

QString PathMap::toDesktop(const QString& machinePath) const
{
    const QString path = withoutEndSlash(QDir::cleanPath(machinePath));
    QChar best = u'Z';
    qsizetype bestLength = 0;
    for (auto drive = m_drives.cbegin(); drive != m_drives.cend(); ++drive) {
        const bool holds = path == drive.value() || path.startsWith(drive.value() + u'/');
        if (holds && drive.value().size() > bestLength) {
            best = drive.key();
            bestLength = drive.value().size();
        }
    }
    QString rest = path.mid(bestLength);
    if (rest == u"/")
        rest.clear();
    rest.replace(u'/', u'\\');
    return QString(best) + u':' + (rest.isEmpty() ? QStringLiteral("\\") : rest);
}

bool PathMap::fileExists(const QString& desktopPath) const
{
    const QString machine = toMachine(desktopPath);
    const QFileInfo info(machine);
    return !machine.isEmpty() && info.exists() && !info.isDir();
}

qint64 PathMap::fileSize(const QString& desktopPath) const
{
    return fileExists(desktopPath) ? QFileInfo(toMachine(desktopPath)).size() : 0;
}

QDateTime PathMap::lastChanged(const QString& desktopPath) const
{
    return fileExists(desktopPath) ? QFileInfo(toMachine(desktopPath)).lastModified() : QDateTime();
}

bool PathMap::isReadable(const QString& desktopPath) const
{
    return fileExists(desktopPath) && QFileInfo(toMachine(desktopPath)).isReadable();
}

bool PathMap::dirExists(const QString& desktopPath) const
{
    const QString machine = toMachine(desktopPath);
    return !machine.isEmpty() && QFileInfo(machine).isDir();
}

bool PathMap::makeOneDir(const QString& desktopPath) const
{
    const QString machine = toMachine(desktopPath);
    return !machine.isEmpty() && (QFileInfo(machine).isDir() || QDir().mkdir(machine));
}

void PathMap::removeFile(const QString& desktopPath) const
{
    fileExists(desktopPath) && QFile::remove(toMachine(desktopPath));
}

QStringList PathMap::filesIn(const QString& desktopFolder) const
{
    const QString machine = toMachine(desktopFolder);
    return machine.isEmpty() ? QStringList() : QDir(machine).entryList(QDir::Files, QDir::Name);
}

PathMap::DriveType PathMap::driveType(const QString& root) const
{
    const QString machine = root.size() > 3 ? QString() : toMachine(root.left(2));
    return machine.isEmpty() ? DriveType::NoRoot : DriveType::Fixed;
}

std::optional<PathMap::DiskSpace> PathMap::diskSpace(const QString& desktopPath) const
{
    const QString machine = toMachine(desktopPath);
    struct statvfs disk = {};
    if (machine.isEmpty() || statvfs(QFile::encodeName(machine).constData(), &disk) != 0)
        return {};
    const auto unit = static_cast<qint64>(disk.f_frsize);
    return DiskSpace{static_cast<qint64>(disk.f_blocks) * unit, static_cast<qint64>(disk.f_bavail) * unit};
}

} // namespace platform
