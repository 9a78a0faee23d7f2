#pragma once

#include "PathMap.h"

#include <QString>

// The rules by which a folder and a bare file name are given to the classes that keep them apart.

// Sets folder to the text without its trailing backslashes, with one added. An empty text, or one that names an
// existing plain file, changes nothing; a folder that does not exist is taken.
void setFolder(const platform::PathMap& paths, const QString& text, QString& folder);

// The message about such a name, to be translated.
inline const QString kRefusedFileName =
    QStringLiteral("The file name %1 is refused: it holds one of \\ / : * ? \" < > |");

// Whether the text is a name, and holds none of \ / : * ? " < > |
bool isBareFileName(const QString& text);

// Sets name unless the text is empty or holds any of \ / : * ? " < > |
void setFileName(const QString& text, QString& name);

// The text with one backslash at its end.
QString withBackslash(const QString& folder);
