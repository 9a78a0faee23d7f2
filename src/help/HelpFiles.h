#pragma once

#include <QString>

namespace platform {

class PathMap;

// The help file of a language: "Vorlant.chm" in the program folder, of "JP.txt" "VorlantJ.chm". Desktop paths without a
// trailing backslash.
QString helpFile(const QString& programFolder, const QString& languageFile);

// The HTML edition of a help file is the folder "help/NAME" beside it that bears its name: of "C:\Vorlant\VorlantJ.chm"
// it is the folder help/VorlantJ of the program folder. Returns a machine path, whether the folder exists or not; empty
// when the help file has none.
QString helpEdition(const PathMap& paths, const QString& helpFile);

// Whether a page of the manual holds an element with this id. folder: machine path of an edition.
bool hasHelpAnchor(const QString& folder, const QString& page, const QString& anchor);

// The text of a page; empty when it cannot be read.
QString helpPage(const QString& folder, const QString& page);

} // namespace platform
