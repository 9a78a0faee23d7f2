#pragma once

#include "FolderNotice.h"
#include "Folders.h"
#include "PathMap.h"

#include <QProcessEnvironment>
#include <QString>

// Where the files of a running program are, and what the person at the program has to know about that: show the notices
// once, when the program starts.
struct ProgramFolders
{
    platform::Folders folders;
    FolderNotices notices;
};

// Program folder: VORLANT_PROGRAM_DIR when set; else the executable's folder when it is writable and holds the
// definition folder "ini" (a folder of programs such as /usr/bin never does, not even for root); else
// $XDG_DATA_HOME/vorlant (~/.local/share/vorlant), filled from installedData at the first start and kept up to date
// with it. Application data: $XDG_CONFIG_HOME, else ~/.config. State: $XDG_STATE_HOME, else ~/.local/state. Where the
// program folder is the one of $XDG_DATA_HOME, logs are in "vorlant/Log" of the state and backups in "Backup" of the
// program folder, and what earlier versions left elsewhere is moved there; else logs are in "Log" of the program folder
// and backups beside the settings. Without a home withoutHome stands for all. installedData itself is the program
// folder when none of these can be written to; nothing is kept then. All are machine paths.
ProgramFolders programFolders(const platform::PathMap& paths, const QString& executableFolder,
                              const QString& installedData, const QProcessEnvironment& environment,
                              const QString& withoutHome = QStringLiteral("/var/lib/vorlant"));
