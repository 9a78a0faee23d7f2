#pragma once

#include <QString>

#include <functional>

// What a file dialog is asked for. Paths are the machine's.
struct FileQuestion
{
    bool save = false;
    QString extension; // without a point; added to a name without one
    QString folder;    // where the dialog begins; empty: where the last one was left
    QString filter;    // "name (*.ext)|*.ext", pairs separated by "|"
    QString name;      // that is offered; empty: none
};

// The chosen file, empty when the user cancelled.
using FileChooser = std::function<QString(const FileQuestion& question)>;
