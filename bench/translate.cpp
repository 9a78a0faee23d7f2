// Translating texts while the language file does not change, against looking at the file once for each text.

#include "ProgramContext.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

namespace {

constexpr int kRounds = 15;

QString english(int n)
{
    return QStringLiteral("It is outside the setting range %1.").arg(n);
}

QByteArray languageFile(int texts)
{
    QByteArray bytes = "[Info]\r\nName=Bench\r\n[Language]\r\n";
    for (int n = 0; n < texts; ++n)
        bytes += english(n).toLatin1() + "=translated " + QByteArray::number(n) + "\r\n";
    return bytes;
}

template <typename Work> double bestMilliseconds(Work work)
{
    double best = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    }
    return best;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int texts = smoke ? 50 : 1000;
    const QTemporaryDir dir;
    QDir().mkpath(dir.filePath(QStringLiteral("program/Lang")));
    QDir().mkpath(dir.filePath(QStringLiteral("config")));
    const QString file = dir.filePath(QStringLiteral("program/Lang/T.txt"));
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(languageFile(texts)) < 0)
        return 1;
    out.close();
    const platform::SystemColors colors;
    const platform::Folders folders(platform::PathMap(), dir.filePath(QStringLiteral("program")),
                                    dir.filePath(QStringLiteral("config")));
    ProgramContext program(platform::PathMap(), folders, QProcessEnvironment(), colors);
    program.context().languageFile = QStringLiteral("T.txt");
    int wrong = 0;
    const double translating = bestMilliseconds([&] {
        for (int n = 0; n < texts; ++n)
            wrong += program.library().tranStr(english(n)) == QStringLiteral("translated %1").arg(n) ? 0 : 1;
    });
    const QByteArray path = QFile::encodeName(file);
    const double looking = bestMilliseconds([&] {
        for (int n = 0; n < texts; ++n) {
            struct stat status
            {};
            wrong += stat(path.constData(), &status) == 0 && !english(n).isEmpty() ? 0 : 1;
        }
    });
    std::printf("translate: %d texts %.2f ms (limit 10 for 1000)\n", texts, translating);
    std::printf("translate: over looking at the file as often: %.1f\n", translating / looking);
    return wrong == 0 ? 0 : 1;
}
