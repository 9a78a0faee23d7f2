#include "Folders.h"

#include "CodePage.h"
#include "ShippedFiles.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace platform {

namespace {

const QString kDefinitions = QStringLiteral("/ini");

QString userFolder(const QProcessEnvironment& environment, const QString& variable, const QString& belowHome)
{
    const QString set = environment.value(variable);
    if (QDir::isAbsolutePath(set))
        return set;
    const QString home = environment.value(QStringLiteral("HOME"));
    return home.isEmpty() ? QString() : home + belowHome;
}

// Makes the folder; gives why it cannot be written to, or nothing.
QString troubleOfWriting(const QString& folder)
{
    if (!QDir().mkpath(folder))
        return qt_error_string();
    return QFileInfo(folder).isWritable() ? QString() : qt_error_string(EACCES);
}

QString programFolder(const QString& executableFolder, const QString& installedData,
                      const QProcessEnvironment& environment, FolderNotices& notices)
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
    QDir().mkpath(own);
    const ShippedFiles files(installedData, own, CodePage::fromEnvironment());
    notices = files.update();
    // Where not all could be written the installed definitions do for reading.
    return notices.isEmpty() || files.isWhole() ? own : installedData;
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
    FolderNotices notices;
    Folders folders(paths, programFolder(executableFolder, installedData, environment, notices), data);
    const QString trouble = data.isEmpty() ? QString() : troubleOfWriting(data);
    if (!trouble.isEmpty())
        notices.append({QStringLiteral("Settings cannot be kept in %1: %2. Give yourself the right to write there, or "
                                       "name another folder with XDG_CONFIG_HOME."),
                        data, trouble});
    folders.m_notices = notices;
    return folders;
}

} // namespace platform
