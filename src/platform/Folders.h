#pragma once

#include "FolderNotice.h"
#include "PathMap.h"

#include <QProcessEnvironment>
#include <QString>

namespace platform {

// Where the program's files are, as desktop paths without a trailing backslash. Fixed for the life of the process.
class Folders
{
public:
    // Everything given, as machine paths: for tests.
    Folders(const PathMap& paths, const QString& programFolder, const QString& applicationData);

    // For a running program. Program folder: VORLANT_PROGRAM_DIR when set; else the executable's folder when it is
    // writable and holds the definition folder "ini" (a folder of programs such as /usr/bin never does, not even for
    // root); else $XDG_DATA_HOME/vorlant (~/.local/share/vorlant), filled from installedData at the first start and
    // kept up to date with it. Application data: $XDG_CONFIG_HOME, else ~/.config. Without a home withoutHome stands
    // for both. installedData itself is the program folder when none of these can be written to; nothing is kept then.
    static Folders forProcess(const PathMap& paths, const QString& executableFolder, const QString& installedData,
                              const QProcessEnvironment& environment,
                              const QString& withoutHome = QStringLiteral("/var/lib/vorlant"));

    QString program() const { return m_program; }
    bool isPackaged() const { return m_isPackaged; } // the program folder is the package's: it is never written to
    QString applicationData() const { return m_applicationData; } // empty when it cannot be obtained
    QString windows() const { return m_windows; }                 // the machine's shared program data
    QString system() const { return m_system; }                   // the machine's libraries
    QString temporary() const { return m_temporary; }

    // What the person at the program has to know about them: show it once, when the program starts.
    const FolderNotices& notices() const { return m_notices; }

    // The executable's base name, the same for all three programs so that they share settings, layout and logs.
    QString baseName() const { return QStringLiteral("Vorlant"); }

private:
    QString m_program;
    QString m_applicationData;
    QString m_windows;
    QString m_system;
    QString m_temporary;
    bool m_isPackaged = false;
    FolderNotices m_notices;
};

} // namespace platform
