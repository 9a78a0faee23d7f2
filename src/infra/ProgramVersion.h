#pragma once

#include <QString>

class clsLibrary;

// The version of the program.
struct ProgramVersion
{
    int major = 0;
    int minor = 0;
    int revision = 0;

    static ProgramVersion current();

    QString plain() const; // "1.2.15"

    // For a person, in the language in use: "Ver. 1.02", or "Ver. 1.02.05" when there is a revision.
    QString text(const clsLibrary& library) const;
};
