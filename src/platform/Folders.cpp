#include "Folders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace platform {

namespace {

const QString kDefinitions = QStringLiteral("/ini");

// Copies what the target lacks; files that are there already stay as they are.
void fillFolder(const QString& source, const QString& target)
{
    QDir().mkpath(target);
    QDirIterator walk(source, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString from = walk.next();
        const QString to = target + from.mid(source.size());
        if (QFileInfo(from).isDir()) {
            QDir().mkpath(to);
        } else if (!QFileInfo::exists(to)) {
            QFile::copy(from, to);
            QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
        }
    }
}

QString userFolder(const QProcessEnvironment& environment, const QString& variable, const QString& belowHome)
{
    const QString set = environment.value(variable);
    if (QDir::isAbsolutePath(set))
        return set;
    const QString home = environment.value(QStringLiteral("HOME"));
    return home.isEmpty() ? QString() : home + belowHome;
}

QString programFolder(const QString& executableFolder, const QString& installedData,
                      const QProcessEnvironment& environment)
{
    const QString set = environment.value(QStringLiteral("VORLANT_PROGRAM_DIR"));
    if (!set.isEmpty())
        return QFileInfo(set).absoluteFilePath();
    if (QFileInfo(executableFolder).isWritable() && QFileInfo(executableFolder + kDefinitions).isDir())
        return executableFolder;
    const QString data = userFolder(environment, QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/.local/share"));
    if (data.isEmpty())
        return installedData; // a user without a home has no folder of his own to fill
    const QString own = data + QStringLiteral("/vorlant");
    fillFolder(installedData, own);
    return own;
}

} // namespace

Folders::Folders(const PathMap& paths, const QString& programFolder, const QString& applicationData)
    : m_program(paths.toDesktop(programFolder)),
      m_applicationData(applicationData.isEmpty() ? QString() : paths.toDesktop(applicationData)),
      m_windows(paths.toDesktop(QStringLiteral("/usr/share"))), m_system(paths.toDesktop(QStringLiteral("/usr/lib"))),
      m_temporary(paths.toDesktop(QDir::tempPath()))
{}

Folders Folders::forProcess(const PathMap& paths, const QString& executableFolder, const QString& installedData,
                            const QProcessEnvironment& environment)
{
    const QString data = userFolder(environment, QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/.config"));
    if (!data.isEmpty())
        QDir().mkpath(data);
    return Folders(paths, programFolder(executableFolder, installedData, environment), data);
}

} // namespace platform
