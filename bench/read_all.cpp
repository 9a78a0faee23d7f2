// A whole read of the simulated KX410 at the pace of a real wire: wall time over the time of its bytes on the wire.

#include "PacedController.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstring>

namespace {

bool measure(int mode, int pace)
{
    paced::Connection connection(mode, pace);
    QElapsedTimer timer;
    timer.start();
    connection.engine->getDataFromKX(nullptr);
    const double wall = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    const ReadReport& report = connection.engine->lastRead();
    const double wire = static_cast<double>(report.wireBytes) * paced::kBitsPerByte / pace;
    std::printf("read_all: %s at %d: %.3f s over %.3f s on the wire: %.3f (limit 1.10)\n", mode == 1 ? "ASCII" : "RTU",
                pace, wall, wire, wall / wire);
    return report.outcome == ReadOutcome::Complete && report.failures == 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--smoke") == 0)
        return measure(0, 115200) ? 0 : 1;
    bool complete = true;
    for (const int pace : {19200, 9600}) {
        for (const int mode : {0, 1})
            complete = measure(mode, pace) && complete;
    }
    return complete ? 0 : 1;
}
