// How long after its last byte a refusal is reported, at its worst of many: with room for a busy machine it has to be
// far below the time-out, which is what a request without a reply costs.

#include "ProgramContext.h"
#include "ProtocolNumbers.h"
#include "RequestChannel.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "SystemColors.h"
#include "uclComm.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr double kLimitMs = 50;
constexpr double kNsPerMs = 1e6;

bool measure(bool ascii, int requests)
{
    const QTemporaryDir dir;
    const platform::SystemColors colors;
    ProgramContext program(platform::PathMap(), platform::Folders(platform::PathMap(), dir.path(), dir.path()),
                           QProcessEnvironment(), colors);
    QElapsedTimer lastByte;
    const ScriptedController controller([&](const QByteArray&) {
        lastByte.start();
        return modbusframe::toWire(QByteArray::fromHex("01C202"), ascii);
    });
    program.ports().assign(1, controller.device());
    uclComm link(program.ports(), program.clock());
    link.init(1, &program.library());
    RequestChannel channel(link, program.library(), noLog());
    channel.begin(1, ascii ? 1 : 0);
    double worst = 0;
    bool refused = true;
    for (int i = 0; i < requests; ++i) {
        channel.modbus().ReadDirectMemory(0x8000, 16);
        refused = channel.exchange(functioncode::kMemory) == RequestChannel::Result::Failed && refused;
        worst = std::max(worst, static_cast<double>(lastByte.nsecsElapsed()) / kNsPerMs);
    }
    std::printf("exception: %s: reported %.2f ms after its last byte at worst of %d: %.3f of the limit of %.0f ms\n",
                ascii ? "ASCII" : "RTU", worst, requests, worst / kLimitMs, kLimitMs);
    return refused;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int requests = argc > 1 && std::strcmp(argv[1], "--smoke") == 0 ? 6 : 600;
    const bool rtu = measure(false, requests);
    const bool ascii = measure(true, requests);
    return rtu && ascii ? 0 : 1;
}
