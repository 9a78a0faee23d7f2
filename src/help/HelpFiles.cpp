#include "HelpFiles.h"

#include "PathMap.h"

#include <QFile>

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

bool hasHelpAnchor(const QString& folder, const QString& page, const QString& anchor)
{
    return !anchor.isEmpty() && helpPage(folder, page).contains(QStringLiteral(" id=\"%1\"").arg(anchor));
}

QString helpPage(const QString& folder, const QString& page)
{
    QFile file(folder + u'/' + page);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace platform
