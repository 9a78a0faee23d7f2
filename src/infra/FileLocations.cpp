#include "FileLocations.h"

#include "FilePaths.h"
#include "clsINI.h"

QString iniFilePath(const platform::Machine& machine, const QString& kind)
{
    const QString data = machine.folders.applicationData();
    const bool inProgram = kind.isEmpty() || data.isEmpty();
    const QString folder =
        inProgram ? machine.folders.program() + QStringLiteral("\\ini") : data + QStringLiteral("\\Vorlan");
    if (!machine.paths.dirExists(folder))
        filepaths::makeDir(machine, folder);
    return folder;
}

QString backupFolder(const platform::Machine& machine)
{
    const QString own = machine.folders.backups();
    return own.isEmpty() ? iniFilePath(machine, QStringLiteral("Main")) + QStringLiteral("\\Backup") : own;
}

QString iniFileName(const platform::Machine& machine)
{
    return machine.folders.baseName() + QStringLiteral(".ini");
}

clsINI mainSettings(Context& context)
{
    clsINI ini(context);
    ini.setIniPath(iniFilePath(context.machine, QStringLiteral("Main")));
    ini.setIniFileName(iniFileName(context.machine));
    return ini;
}

clsINI layoutFile(Context& context, const QString& name)
{
    clsINI ini = mainSettings(context);
    ini.setIniFileName(name.isEmpty() ? context.machine.folders.baseName() + QStringLiteral("Pos.ini") : name);
    return ini;
}
