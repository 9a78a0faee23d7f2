#pragma once

#include <QString>

#include <functional>

class QWidget;

// What a file dialog is asked for. Paths are the machine's.
struct FileQuestion
{
    bool save = false;
    QString extension; // without a point; added to a name without one
    QString folder;    // where the dialog begins; empty: where the last one was left
    QString filter;    // "name (*.ext)|*.ext", pairs separated by "|"
};

// The chosen file, empty when the user cancelled.
using FileChooser = std::function<QString(QWidget* owner, const FileQuestion& question)>;

// The desktop's own file dialog. Saving over a file is asked for.
QString chooseFile(QWidget* owner, const FileQuestion& question);
