#pragma once

#include "Clock.h"
#include "CodePage.h"
#include "Folders.h"
#include "PathMap.h"
#include "ProfileStore.h"
#include "SystemColors.h"

namespace platform {

// The machine as one process sees it: made once by each program (and by each test), handed down by reference.
struct Machine
{
    CodePage codePage;
    PathMap paths;
    Folders folders;
    ProfileStore profiles;
    Clock& clock;
    const SystemColors* colors; // never null

    Machine(const CodePage& page, PathMap map, Folders where, Clock& time, const SystemColors& palette)
        : codePage(page), paths(std::move(map)), folders(std::move(where)), profiles(page), clock(time),
          colors(&palette)
    {
        if (folders.isPackaged())
            profiles.protect(paths.toMachine(folders.program()));
    }
};

} // namespace platform
