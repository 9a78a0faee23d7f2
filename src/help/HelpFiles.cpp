#include "HelpFiles.h"

#include "PathMap.h"

namespace platform {

QString helpFile(const QString& programFolder, const QString& languageFile)
{
    const bool isJapanese = languageFile == u"JP.txt"; // so written, and no other
    return programFolder + (isJapanese ? QStringLiteral("\\VorlantJ.chm") : QStringLiteral("\\Vorlant.chm"));
}

QString helpEdition(const PathMap& paths, const QString& helpFile)
{
    const QString folder = helpFile.section(u'\\', 0, -2);
    const QString name = helpFile.section(u'\\', -1).section(u'.', 0, 0);
    if (folder.isEmpty() || name.isEmpty())
        return QString();
    return paths.toMachine(folder + QStringLiteral("\\help\\") + name);
}

} // namespace platform
