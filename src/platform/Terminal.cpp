#include "Terminal.h"

#include "VisibleText.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <unistd.h>

namespace platform {

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

void showWarningsVisibly()
{
    static QtMessageHandler printed = nullptr;
    printed = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& message) {
        printed(type, context, visibleLines(message));
    });
}

bool hasDisplay(const QProcessEnvironment& environment)
{
    const auto isNamed = [&](const char* variable) { return !environment.value(QLatin1String(variable)).isEmpty(); };
    const auto variables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(variables.begin(), variables.end(), isNamed);
}

} // namespace platform
