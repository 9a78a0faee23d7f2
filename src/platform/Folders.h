#pragma once

#include "PathMap.h"

#include <QString>

namespace platform {

// What a user keeps besides the settings; machine paths.
struct UserFolders
{
    QString state;   // empty: a folder "state" beside the application data
    QString logs;    // empty: "Log" in the program folder
    QString backups; // empty: beside the settings
};

// Where the program's files are, as desktop paths without a trailing backslash. Fixed for the life of the process.
class Folders
{
public:
    // Machine paths; an empty applicationData cannot be obtained. isPackaged: the program folder is the package's.
    Folders(const PathMap& paths, const QString& programFolder, const QString& applicationData, bool isPackaged = false,
            const UserFolders& user = {});

    QString program() const { return m_program; }
    bool isPackaged() const { return m_isPackaged; }              // the program folder is never written to
    QString applicationData() const { return m_applicationData; } // empty when it cannot be obtained
    QString state() const { return m_state; }                     // a machine path; empty when it cannot be obtained
    QString logs() const { return m_logs; }
    QString backups() const { return m_backups; } // empty: beside the settings
    QString windows() const { return m_windows; } // the machine's shared program data
    QString system() const { return m_system; }   // the machine's libraries
    QString temporary() const { return m_temporary; }

    // The executable's base name, the same for all three programs so that they share settings, layout and logs.
    QString baseName() const { return QStringLiteral("Vorlant"); }

private:
    QString m_program;
    QString m_applicationData;
    QString m_state;
    QString m_logs;
    QString m_backups;
    QString m_windows;
    QString m_system;
    QString m_temporary;
    bool m_isPackaged;
};

} // namespace platform
