// vorlant_soak [CYCLES] [SEED]: reads and writes through the transfer engine over a line with faults, half of the
// cycles in each mode. Ends with 1 when a value was wrong that was taken as right, when a transfer failed and did not
// report it, when the last clean read does not agree with the controller, or when memory grew.

#include "Soak.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int kWarmUpCycles = 50;
constexpr double kMemoryLimit = 1.10; // of the resident memory after the warm-up
constexpr int kShownLines = 20;

// Resident memory in KiB, without what the allocator keeps for later.
qint64 residentKiB()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}

struct Memory
{
    qint64 warm = 0;
    qint64 last = 0;
};

// The cycles of one mode; the seconds that passed on its line.
qint64 run(int mode, int cycles, unsigned seed, SoakResult& result, Memory& memory)
{
    Soak soak(mode, seed, result);
    for (int i = 1; i <= cycles; ++i) {
        soak.cycle();
        if (result.cycles == kWarmUpCycles)
            memory.warm = residentKiB();
    }
    soak.finish();
    memory.last = residentKiB();
    return soak.lineSeconds();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const int cycles = argc > 1 ? QByteArray(argv[1]).toInt() : 500;
    const unsigned seed = argc > 2 ? QByteArray(argv[2]).toUInt() : 1;
    if (cycles < 2 || argc > 3) {
        std::fprintf(stderr, "vorlant_soak [CYCLES] [SEED]: at least 2 cycles\n");
        return 2;
    }
    QElapsedTimer timer;
    timer.start();
    SoakResult result;
    Memory memory;
    qint64 lineSeconds = run(0, cycles / 2, seed, result, memory);
    lineSeconds += run(1, cycles - cycles / 2, seed + 1, result, memory);
    std::printf("%d cycles, seed %u, %.0f s (%lld s on the line)\n", result.cycles, seed,
                1e-3 * static_cast<double>(timer.elapsed()), static_cast<long long>(lineSeconds));
    std::printf("clean reads %d, clean writes %d, reported failures %d, requests without a valid reply %d\n",
                result.cleanReads, result.cleanWrites, result.reportedFailures, result.repetitions);
    std::printf("wrong values taken as right: %lld\n", static_cast<long long>(result.wrong.size()));
    for (const QString& text : result.wrong.mid(0, kShownLines))
        std::printf("  %s\n", qPrintable(text));
    bool grew = false;
    if (memory.warm > 0) {
        const double ratio = static_cast<double>(memory.last) / static_cast<double>(memory.warm);
        grew = ratio > kMemoryLimit;
        std::printf("memory %lld KiB after %d cycles, %lld KiB at the end: ratio %.3f, limit %.2f%s\n",
                    static_cast<long long>(memory.warm), kWarmUpCycles, static_cast<long long>(memory.last), ratio,
                    kMemoryLimit, grew ? " EXCEEDED" : "");
    }
    return result.wrong.isEmpty() && !grew ? 0 : 1;
}
