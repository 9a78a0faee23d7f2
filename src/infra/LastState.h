#pragma once

#include <QString>

class clsLibrary;

// The controller used last, kept in section "Setting" of the main settings file between two runs.
struct LastState
{
    int modelNo = 1;          // catalogue number
    int slaveAddress = 1;     // 1 to 247
    int transmissionMode = 0; // 0 RTU, 1 ASCII
    QString modelString;      // empty before the first use

    // Missing keys are written with their defaults; a text that is no number reads as its default.
    static LastState load(clsLibrary& library);
    void save(clsLibrary& library) const;
};
