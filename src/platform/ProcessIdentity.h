#pragma once

#include <QString>

namespace platform {

// One process, told apart from a later one that has its number.
struct ProcessIdentity
{
    qint64 number = 0;
    qint64 started = 0; // clock ticks from the start of the machine (proc(5), field 22 of stat); 0: not known

    static ProcessIdentity own();

    // Whether it runs. One whose start cannot be asked runs as long as its number is in use.
    bool isRunning() const;
};

// The name of the user that this process runs as; the number where it has none.
QString userName();

} // namespace platform
