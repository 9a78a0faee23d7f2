#pragma once

#include <QString>

namespace platform {

// The lock file by which programs keep each other off a serial device, as it is found before or after an attempt to
// open the device.
struct PortLock
{
    enum class State {
        None,
        Held,      // by a process that runs
        Abandoned, // its process has ended, or never wrote its number
        NoLock     // no regular file, too large, or it names no process: opening the device could hang on it
    };

    State state = State::None;
    QString file;    // machine path
    QString process; // number and name; empty when there is none

    // Removes one whose process has ended, where the folder allows that.
    void removeAbandoned() const;

    // device: canonical path below /dev.
    static PortLock of(const QString& device);
};

} // namespace platform
