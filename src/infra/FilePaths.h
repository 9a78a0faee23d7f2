#pragma once

#include "Machine.h"

#include <QString>

// File and folder names by the desktop platform's rules, and the folders themselves.
namespace filepaths {

constexpr int kMaxPathBytes = 250;

// Makes every missing level; true when the folder exists afterwards. A path without ":" is below the program folder.
bool makeDir(const platform::Machine& machine, const QString& path);

QString fileTitle(const QString& path);     // behind the last backslash
QString fileExtension(const QString& name); // behind the last point
QString fileTitleWithoutExt(const QString& path);
QString dirName(const QString& path); // before the last backslash

// counterMode 1: a name that contains "FCCOUNTER" in any case is refused too.
bool isFileName(const QString& name, int counterMode);
// lengthLimit: bytes in the code page, 0 for none.
bool isFileNameWithin(const platform::Machine& machine, const QString& name, int counterMode, int lengthLimit);
bool isPathName(const platform::Machine& machine, const QString& path);

// A removable or fixed drive.
bool isLocalDrive(const platform::Machine& machine, const QString& path);

} // namespace filepaths
