#include "Folders.h"

#include <QDir>
#include <QFileInfo>

namespace platform {

namespace {

QString besideSettings(const QString& applicationData)
{
    return applicationData.isEmpty() ? QString() : QFileInfo(applicationData).path() + QStringLiteral("/state");
}

} // namespace

Folders::Folders(const PathMap& paths, const QString& programFolder, const QString& applicationData, bool isPackaged,
                 const UserFolders& user)
    : m_program(paths.toDesktop(programFolder)),
      m_applicationData(applicationData.isEmpty() ? QString() : paths.toDesktop(applicationData)),
      m_state(user.state.isEmpty() ? besideSettings(applicationData) : user.state),
      m_logs(user.logs.isEmpty() ? m_program + QStringLiteral("\\Log") : paths.toDesktop(user.logs)),
      m_backups(user.backups.isEmpty() ? QString() : paths.toDesktop(user.backups)),
      m_windows(paths.toDesktop(QStringLiteral("/usr/share"))), m_system(paths.toDesktop(QStringLiteral("/usr/lib"))),
      m_temporary(paths.toDesktop(QDir::tempPath())), m_isPackaged(isPackaged)
{}

} // namespace platform
