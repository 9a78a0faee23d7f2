// A whole read of the simulated KX410 at the pace of a real wire, at a device of the machine and through a serial
// server: wall time over the time of its bytes on the wire.

#include "PacedController.h"
#include "SerialServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstring>
#include <optional>

namespace {

enum class Way { Device, Tcp, Telnet };

const char* nameOf(Way way)
{
    return way == Way::Device ? "" : way == Way::Tcp ? " over TCP" : " over RFC 2217";
}

bool measure(int mode, int pace, Way way = Way::Device)
{
    std::optional<SerialServer> server;
    const auto serve = [&](const QString& device) {
        server.emplace(device);
        return way == Way::Tcp ? server->tcp() : server->telnet();
    };
    paced::Connection connection(mode, pace,
                                 way == Way::Device ? nullptr : std::function<QString(const QString&)>(serve));
    if (connection.link.isDeferred())
        connection.link.openComm(); // as a device is open already
    QElapsedTimer timer;
    timer.start();
    connection.engine->getDataFromKX(nullptr);
    const double wall = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    const ReadReport& report = connection.engine->lastRead();
    const double wire = static_cast<double>(report.wireBytes) * paced::kBitsPerByte / pace;
    std::printf("read_all: %s at %d%s: %.3f s over %.3f s on the wire: %.3f (limit 1.10)\n",
                mode == 1 ? "ASCII" : "RTU", pace, nameOf(way), wall, wire, wall / wire);
    return report.outcome == ReadOutcome::Complete && report.failures == 0;
}

bool measureServers(std::initializer_list<int> paces)
{
    if (!SerialServer::isInstalled()) {
        std::printf("read_all: over TCP and RFC 2217: skipped, ser2net is not installed\n");
        return true;
    }
    bool complete = true;
    for (const int pace : paces) {
        for (const Way way : {Way::Tcp, Way::Telnet})
            complete = measure(0, pace, way) && complete;
    }
    return complete;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--smoke") == 0)
        return measure(0, 115200) && measureServers({115200}) ? 0 : 1;
    bool complete = true;
    for (const int pace : {19200, 9600}) {
        for (const int mode : {0, 1})
            complete = measure(mode, pace) && complete;
    }
    return measureServers({19200, 9600}) && complete ? 0 : 1;
}
