#include "Terminal.h"

#include <unistd.h>

namespace platform {

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

} // namespace platform
