#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// What the program says in place of opening a window.
struct WindowlessAnswer
{
    QString text;       // one or more lines
    int exitStatus = 0; // 0: text is for standard output, else for standard error
};

// For "--help" and "--version", and where there is no display; nothing when the window is to be opened. arguments:
// those behind the name of the program; others are the window's.
std::optional<WindowlessAnswer> windowlessAnswer(const QStringList& arguments, bool hasDisplay);
