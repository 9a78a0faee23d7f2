// From the start of the process to the painted window with the grid of a KX410, and the memory it takes, against an
// empty window with a table of 100 by 10 cells. Each start is a process of its own, on the offscreen platform.

#include "PaletteColors.h"
#include "ProgramContext.h"
#include "frmMain.h"
#include "vaSpread.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTableWidget>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// Ends the process once the widget was painted; tells its resident memory in kB.
class EndWhenPainted : public QObject
{
public:
    explicit EndWhenPainted(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || m_painting)
            return false;
        m_painting = true;
        QCoreApplication::sendEvent(object, event);
        QFile status(QStringLiteral("/proc/self/status"));
        if (status.open(QIODevice::ReadOnly)) {
            const QByteArrayList lines = status.readAll().split('\n');
            for (const QByteArray& line : lines) {
                if (line.startsWith("VmRSS:"))
                    std::printf("%s\n", line.mid(6).simplified().split(' ').first().constData());
            }
        }
        std::fflush(stdout);
        _exit(0);
    }

private:
    bool m_painting = false;
};

int startEmpty(int& argc, char** argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    auto* table = new QTableWidget(100, 10, &window);
    window.setCentralWidget(table);
    window.resize(1280, 860);
    const EndWhenPainted end(table->viewport());
    window.show();
    return QApplication::exec();
}

int startProgram(int& argc, char** argv, const QString& folder)
{
    const QApplication application(argc, argv);
    const platform::PaletteColors colors;
    const platform::PathMap paths;
    ProgramContext program(
        paths, platform::Folders(paths, folder + QStringLiteral("/program"), folder + QStringLiteral("/config")),
        QProcessEnvironment(), colors);
    program.ports().assign(1, folder + QStringLiteral("/no-adapter"));
    frmMain window(program);
    const EndWhenPainted end(window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"))->viewport());
    window.show();
    return QApplication::exec();
}

struct Start
{
    double milliseconds = 1e9;
    double kilobytes = 1e9;
    bool sound = true;
};

void run(Start& best, const QStringList& arguments)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(QCoreApplication::applicationFilePath(), arguments);
    best.sound = process.waitForFinished(60000) && process.exitCode() == 0 && best.sound;
    best.milliseconds = std::min(best.milliseconds, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    const double size = process.readAllStandardOutput().trimmed().toDouble();
    best.sound = best.sound && size > 0;
    best.kilobytes = std::min(best.kilobytes, size);
}

bool install(const QString& folder)
{
    for (const char* part : {"ini", "Lang"}) {
        const QString from = QStringLiteral(VORLANT_DATA_DIR "/") + QLatin1String(part);
        const QString to = folder + QStringLiteral("/program/") + QLatin1String(part);
        QDir().mkpath(to);
        const auto names = QDir(from).entryList(QDir::Files);
        for (const QString& name : names)
            QFile::copy(from + u'/' + name, to + u'/' + name);
    }
    QDir().mkpath(folder + QStringLiteral("/config/Vorlan"));
    QFile settings(folder + QStringLiteral("/config/Vorlan/Vorlant.ini"));
    return settings.open(QIODevice::WriteOnly) &&
           settings.write("[Setting]\r\nLanguageFile=EN.txt\r\nLastModelString=KX41000000-10A\r\n") > 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 1 && std::strcmp(argv[1], "--empty") == 0)
        return startEmpty(argc, argv);
    if (argc > 2 && std::strcmp(argv[1], "--program") == 0)
        return startProgram(argc, argv, QString::fromLocal8Bit(argv[2]));
    const QCoreApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const QTemporaryDir dir;
    if (!install(dir.path()))
        return 1;
    Start empty;
    Start program;
    for (int round = 0; round < (smoke ? 2 : 15); ++round) {
        run(program, {QStringLiteral("--program"), dir.path()});
        run(empty, {QStringLiteral("--empty")});
    }
    std::printf("startup: %.0f ms over %.0f ms: %.2f (limit 1.35)\n", program.milliseconds, empty.milliseconds,
                program.milliseconds / empty.milliseconds);
    std::printf("startup: %.1f MB over %.1f MB: %.2f (limit 1.25)\n", program.kilobytes / 1024, empty.kilobytes / 1024,
                program.kilobytes / empty.kilobytes);
    return empty.sound && program.sound ? 0 : 1;
}
