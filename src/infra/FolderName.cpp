#include "FolderName.h"

#include <algorithm>

void setFolder(const platform::PathMap& paths, const QString& text, QString& folder)
{
    QString stripped = text;
    while (stripped.endsWith(u'\\'))
        stripped.chop(1);
    if (!stripped.isEmpty() && !paths.fileExists(stripped))
        folder = stripped + u'\\';
}

bool isBareFileName(const QString& text)
{
    static const QString kRefused = QStringLiteral("\\/:*?\"<>|");
    return !text.isEmpty() && std::none_of(text.cbegin(), text.cend(), [](QChar c) { return kRefused.contains(c); });
}

void setFileName(const QString& text, QString& name)
{
    if (isBareFileName(text))
        name = text;
}

QString withBackslash(const QString& folder)
{
    return folder.endsWith(u'\\') ? folder : folder + u'\\';
}
