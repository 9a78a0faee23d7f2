#include "WindowlessAnswer.h"

#include "ProgramVersion.h"

namespace {

constexpr int kNoDisplay = 1;

const QString kHelp = QStringLiteral(
    "Usage: vorlant [--read-only] [/D /M:MODELSTRING]\n"
    "Opens the window of the parameter tool for KX process controllers. With --read-only nothing is written to a\n"
    "controller. With /D and /M: the model string takes the place of the one that the controller answers when its\n"
    "model is detected.\n"
    "See vorlant(1); vorlantctl(1) does the same from a terminal, vorlant-sim(1) plays a controller.\n");

} // namespace

std::optional<WindowlessAnswer> windowlessAnswer(const QStringList& arguments, bool hasDisplay)
{
    if (arguments.contains(QStringLiteral("--help")))
        return WindowlessAnswer{kHelp, 0};
    if (arguments.contains(QStringLiteral("--version")))
        return WindowlessAnswer{QStringLiteral("vorlant %1\n").arg(ProgramVersion::current().plain()), 0};
    if (hasDisplay || arguments.contains(QStringLiteral("-platform")))
        return {};
    return WindowlessAnswer{QStringLiteral("vorlant: there is no display to open a window on; start it in a desktop "
                                           "session, or use vorlantctl in a terminal\n"),
                            kNoDisplay};
}
