#pragma once

#include "ProgramOptions.h"
#include "Result.h"

#include <QString>

class clsLibrary;

// The options that the process keeps in the main settings file: loaded once at start-up, saved by the options dialog.
// Call init before load and save.
class clsCfg : public ProgramOptions
{
public:
    void init(clsLibrary* objLib); // kept by reference
    void load();
    // A failure says why the options are not on the disk.
    platform::Result<> save();

private:
    clsLibrary* m_library = nullptr;
};
