#pragma once

#include <QString>

class clsINI;
class clsLibrary;
class DefinitionLog;

// The global keys of a screen file, section "Setting".
struct ScreenSettings
{
    // A count of more sections than this, or of more than twice those of its kind in the file, is taken as damaged:
    // then the sections really present count.
    static constexpr int kMaxSections = 100000;

    QString extension; // "ExtName" as stored
    QString dataPath;
    int blockCount = 0;
    int stringCount = 0;
    int dataCount = 0;
    QString dialogFilter;
    QString fontName;
    double fontSize = 11;
    QString backColor;
    QString foreColor;
    int maxRow = 10;
    int maxCol = 10;

    QString ext() const; // the extension with every "." removed

    // Only the counts and the grid size.
    void loadSize(clsINI& ini, const clsLibrary& library);
    // All keys, in the order of the file. Damaged counts go to the log.
    void load(clsINI& ini, const clsLibrary& library, const QString& modelCode, DefinitionLog& log);
};
