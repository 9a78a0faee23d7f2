#include "Folders.h"

#include <QDir>

namespace platform {

Folders::Folders(const PathMap& paths, const QString& programFolder, const QString& applicationData, bool isPackaged)
    : m_program(paths.toDesktop(programFolder)),
      m_applicationData(applicationData.isEmpty() ? QString() : paths.toDesktop(applicationData)),
      m_windows(paths.toDesktop(QStringLiteral("/usr/share"))), m_system(paths.toDesktop(QStringLiteral("/usr/lib"))),
      m_temporary(paths.toDesktop(QDir::tempPath())), m_isPackaged(isPackaged)
{}

} // namespace platform
