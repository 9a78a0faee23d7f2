#pragma once

#include <QString>

namespace platform {

// The lock file by which programs keep each other off a serial device, as it is found before or after an attempt to
// open the device. A lock file of a process that has ended is taken over by the opening where its folder allows that.
struct PortLock
{
    enum class State {
        None,
        Held,      // by a process that runs
        Abandoned, // its process has ended
        NoLock     // no regular file, too large, or it names no process: opening the device could hang on it
    };

    State state = State::None;
    QString file;    // machine path
    QString process; // number and name; empty when there is none

    // device: canonical path below /dev.
    static PortLock of(const QString& device);
};

} // namespace platform
