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

// The command line of the window.
struct StartArguments
{
    bool isReadOnly = false;                // nothing is written to a controller in this run
    QString file;                           // parameter file to open, as it was given; empty: none
    QString detection;                      // switches of the model detection, as it takes them; empty: none
    std::optional<WindowlessAnswer> answer; // for help, version and wrong usage, and where there is no display

    // Nothing that a window which is open already could not take over.
    bool isPlain() const { return !isReadOnly && detection.isEmpty(); }

    // arguments: those behind the name of the program, with or without those of the Qt library.
    static StartArguments parse(const QStringList& arguments, bool hasDisplay);
};
