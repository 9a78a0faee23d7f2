#pragma once

class QProcessEnvironment;

namespace platform {

// True when standard error is shown to a person rather than kept in a file or read by a program.
bool standardErrorIsTerminal();

// False when there is no window system for a window: no desktop is named in the environment, nor another platform of
// Qt.
bool hasDisplay(const QProcessEnvironment& environment);

} // namespace platform
