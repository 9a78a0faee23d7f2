#pragma once

#include "Result.h"

#include <QString>

class clsLibrary;

// The model of the catalogue that a parameter file belongs to.
struct FileModel
{
    int number = 0; // in the catalogue, from 1
    QString modelString;
};

// file: machine path. Fails with a sentence for the user when it cannot be read, is no parameter file, or is of a model
// that the catalogue lacks.
platform::Result<FileModel> modelOfFile(clsLibrary& library, const QString& file);
