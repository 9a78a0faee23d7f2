#pragma once

#include <QString>
#include <QStringList>

namespace platform {

// Texts from outside (a controller, a definition, language or parameter file, a file name) as they are shown. What is
// stored, sent and compared stays as it is.

// Characters that are not seen themselves or change how others are seen: controls, marks of direction and other format
// characters, separators of lines, lone surrogates, and codes that are no characters.
bool isInvisible(char32_t code);

// Each of them becomes "\x1b", from U+0100 on "<U+202E>": the text is one line, and harmless in a terminal.
QString visibleText(const QString& text);
QStringList visibleTexts(const QStringList& texts); // for a list of choices; each at its place

// The same for texts of more than one line: line breaks stay, as "\n".
QString visibleLines(const QString& text);

} // namespace platform
