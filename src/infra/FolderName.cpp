#include "FolderName.h"

#include <algorithm>

void takeFolder(const platform::PathMap& paths, const QString& text, QString& folder)
{
    QString stripped = text;
    while (stripped.endsWith(u'\\'))
        stripped.chop(1);
    if (!stripped.isEmpty() && !paths.fileExists(stripped))
        folder = stripped + u'\\';
}

void takeFileName(const QString& text, QString& name)
{
    static const QString kRefused = QStringLiteral("\\/:*?\"<>|");
    const bool refused = std::any_of(text.cbegin(), text.cend(), [](QChar c) { return kRefused.contains(c); });
    if (!text.isEmpty() && !refused)
        name = text;
}

QString withBackslash(const QString& folder)
{
    return folder.endsWith(u'\\') ? folder : folder + u'\\';
}
