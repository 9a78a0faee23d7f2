// A whole write of the simulated KX410 with its read-back, at the pace of a real wire: wall time over the time of its
// bytes on the wire and of the pauses that belong to it.

#include "PacedController.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstring>

namespace {

bool measure(int mode, int pace)
{
    paced::Connection connection(mode, pace);
    TransferEngine& engine = *connection.engine;
    engine.getDataFromKX(nullptr);
    clsData* setValue = connection.kx.getDataByTag(QStringLiteral("VQSV1"));
    setValue->setData(QStringLiteral("1357"));
    QElapsedTimer timer;
    timer.start();
    engine.setDataToKXAll();
    const double wall = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    const auto bytes = static_cast<double>(engine.lastWrite().wireBytes + engine.lastRead().wireBytes);
    const double wire = bytes * paced::kBitsPerByte / pace;
    const double pauses = engine.lastWrite().pausesMs * 1e-3;
    std::printf("write_all: %s at %d: %.3f s over %.3f s on the wire and %.3f s of pauses: %.3f (limit 1.10)\n",
                mode == 1 ? "ASCII" : "RTU", pace, wall, wire, pauses, wall / (wire + pauses));
    return engine.lastWrite().outcome == WriteOutcome::Complete && engine.lastWrite().failed.isEmpty() &&
           engine.lastWrite().notAccepted.isEmpty() && setValue->Data() == u"1357";
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--smoke") == 0)
        return measure(0, 115200) ? 0 : 1;
    const bool rtu = measure(0, 19200);
    const bool ascii = measure(1, 19200);
    return rtu && ascii ? 0 : 1;
}
