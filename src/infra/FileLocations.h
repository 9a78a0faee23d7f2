#pragma once

#include "Machine.h"

#include <QString>

class clsINI;
struct Context;

// Where the INI files are: the definition folder "ini" under the program folder for an empty kind, the folder "Vorlan"
// under the user's application data for any other. The folder is made when it is missing. No trailing backslash.
QString iniFilePath(const platform::Machine& machine, const QString& kind);

// Where backups are kept: the user's own folder of them, else "Backup" beside the settings. It is not made here.
QString backupFolder(const platform::Machine& machine);

// The main settings file's bare name.
QString iniFileName(const platform::Machine& machine);

// Section of the main settings file whose keys COMn name devices.
inline const QString kPortsSection = QStringLiteral("Ports");

// Access to the main settings file. Needs "clsINI.h".
clsINI mainSettings(Context& context);

// Access to the layout file beside it, or to the file of that folder that is named. Needs "clsINI.h".
clsINI layoutFile(Context& context, const QString& name = {});
