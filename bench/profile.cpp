// Profile store: mean time of a read in an unchanged file, replacements while a file fills with defaults, and growth.

#include "ProfileStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <tuple>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kKeys = 20;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

QString sectionName(int n)
{
    return QStringLiteral("Datas%1").arg(n);
}

QString keyName(int k)
{
    return QStringLiteral("SomeKey%1").arg(k);
}

// Seconds to fill an empty file; replacements counts how often it was written.
double fill(const QString& file, int items, int& replacements)
{
    QFile::remove(file);
    platform::ProfileStore store{platform::CodePage()};
    const auto start = Clock::now();
    platform::ProfileStore::Batch batch(store);
    for (int n = 1; n <= items; ++n) {
        for (int k = 0; k < kKeys; ++k) {
            if (store.read(file, sectionName(n), keyName(k), QString(), 512).count == 0)
                std::ignore = store.write(file, sectionName(n), keyName(k), QStringLiteral("default"));
        }
    }
    if (!batch.commit().ok())
        replacements = 0; // fails the run
    replacements = store.replacements();
    return secondsSince(start);
}

} // namespace

int main(int argc, char** argv)
{
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int items = smoke ? 50 : 1000;
    const int reads = smoke ? 200 : 20000;
    const QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("p.ini"));
    int replacements = 0;
    int ignored = 0;
    const double once = fill(file, items, replacements);
    const double twice = fill(file, 2 * items, ignored);

    fill(file, items * 3 / 4, ignored); // about 300 KB
    platform::ProfileStore store{platform::CodePage()};
    store.read(file, sectionName(1), keyName(0), QString(), 512);
    const auto start = Clock::now();
    qsizetype found = 0;
    for (int i = 0; i < reads; ++i)
        found += store.read(file, sectionName(i % (items / 2) + 1), keyName(i % kKeys), QString(), 512).count;
    const double mean = secondsSince(start) / reads * 1e6;

    std::printf("profile: file of %lld KB, mean read %.2f microseconds (limit 5)\n",
                static_cast<long long>(QFile(file).size() / 1024), mean);
    std::printf("profile: filling %d items replaced the file %d time(s) (limit 1)\n", items, replacements);
    std::printf("profile: time of %d items over time of %d: %.2f (limit 2.3)\n", 2 * items, items, twice / once);
    return replacements == 1 && found > 0 ? 0 : 1;
}
