#include "Terminal.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <unistd.h>

namespace platform {

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

bool hasDisplay(const QProcessEnvironment& environment)
{
    const auto isNamed = [&](const char* variable) { return !environment.value(QLatin1String(variable)).isEmpty(); };
    const auto variables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(variables.begin(), variables.end(), isNamed);
}

} // namespace platform
