#pragma once

#include "HelpKey.h"

class ProgramContext;
class clsKX;

namespace platform {
class vaSpread;
}

// The manual as the main window opens it: in the language in use, and in the grid at the parameter of the current cell.
// All parts are kept by reference.
class MainHelp
{
public:
    MainHelp(ProgramContext& program, const clsKX& kx, const platform::vaSpread& grid);

    void show(); // the page about what the user is at, as the key does

private:
    HelpKey m_key;
};
