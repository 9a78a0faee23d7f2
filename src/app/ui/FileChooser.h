#pragma once

#include "FileQuestion.h"

class QWidget;

// Asks by the desktop's own file dialog; the chosen file, empty when the user cancelled. Saving over a file is asked
// for.
QString chooseFile(QWidget* owner, const FileQuestion& question);
