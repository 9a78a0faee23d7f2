#pragma once

class QProcessEnvironment;

namespace platform {

// True when standard error is shown to a person rather than kept in a file or read by a program.
bool standardErrorIsTerminal();

// Qt's own warnings name the texts that it stumbled over, and these may be a file's: from here on they are visible
// text. Once for each program.
void showWarningsVisibly();

// False when there is no window system for a window: no desktop is named in the environment, nor another platform of
// Qt.
bool hasDisplay(const QProcessEnvironment& environment);

} // namespace platform
