// A search over 99 slave numbers with one setting, in RTU and in ASCII mode, on a line where nobody answers: wall time
// over its limit.

#include "ControllerScan.h"
#include "ProgramContext.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "SystemColors.h"
#include "uclComm.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

constexpr double kLimitSeconds = 30;
constexpr double kNsPerSecond = 1e9;

bool measure(const LineSettings& line, int slaves)
{
    const QTemporaryDir dir;
    const platform::SystemColors colors;
    ProgramContext program(platform::PathMap(), platform::Folders(platform::PathMap(), dir.path(), dir.path()),
                           QProcessEnvironment(), colors);
    const ScriptedController controller([](const QByteArray&) { return QByteArray(); });
    program.ports().assign(1, controller.device());
    uclComm link(program.ports(), program.clock());
    link.init(1, &program.library());
    ControllerScan scan(link, program.library());
    QElapsedTimer timer;
    timer.start();
    const bool isWhole = scan.run({{1}, {line}, 1, slaves, false});
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / kNsPerSecond;
    std::printf("scan: %d slaves on a silent line at %s: %.2f s, %.3f of the limit of %.0f s for 99\n", slaves,
                qPrintable(line.text()), seconds, seconds / kLimitSeconds, kLimitSeconds);
    return isWhole && controller.requests() == slaves;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int slaves = argc > 1 && std::strcmp(argv[1], "--smoke") == 0 ? 3 : 99;
    const QString format = QStringLiteral("N,8,1");
    const bool rtu = measure({QStringLiteral("9600"), format, 0}, slaves);
    const bool ascii = measure({QStringLiteral("9600"), format, 1}, slaves);
    return rtu && ascii ? 0 : 1;
}
