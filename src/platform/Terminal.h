#pragma once

namespace platform {

// True when standard error is shown to a person rather than kept in a file or read by a program.
bool standardErrorIsTerminal();

} // namespace platform
