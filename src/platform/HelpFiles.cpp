#include "HelpFiles.h"

#include "PathMap.h"

namespace platform {

QString helpEdition(const PathMap& paths, const QString& helpFile)
{
    const QString folder = helpFile.section(u'\\', 0, -2);
    const QString name = helpFile.section(u'\\', -1).section(u'.', 0, 0);
    if (folder.isEmpty() || name.isEmpty())
        return QString();
    return paths.toMachine(folder + QStringLiteral("\\help\\") + name);
}

} // namespace platform
