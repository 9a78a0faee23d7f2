#include "FileLocations.h"

#include "FilePaths.h"

QString iniFilePath(const platform::Machine& machine, const QString& kind)
{
    const QString data = machine.folders.applicationData();
    const bool inProgram = kind.isEmpty() || data.isEmpty();
    const QString folder =
        inProgram ? machine.folders.program() + QStringLiteral("\\ini") : data + QStringLiteral("\\Vorlan");
    filepaths::makeDir(machine, folder);
    return folder;
}

QString iniFileName(const platform::Machine& machine)
{
    return machine.folders.baseName() + QStringLiteral(".ini");
}
