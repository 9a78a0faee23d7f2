// A whole read of the simulated KX410 at the pace of a real wire: wall time over the time of its bytes on the wire.

#include "EventWait.h"
#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "SimulatedController.h"
#include "SimulatorLine.h"
#include "TransferEngine.h"
#include "uclComm.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <cstring>
#include <semaphore>

namespace {

constexpr double kBitsPerByte = 10;
const QString kModelString = QStringLiteral("KX41000000-10A");

class Shell : public MessagePresenter, public ProgressView, public TransferShell
{
public:
    explicit Shell(int mode) : m_mode(mode) {}
    int present(const Message& message) override
    {
        std::fprintf(stderr, "%s\n", qPrintable(message.prompt));
        return MessageResult::kOk;
    }
    void open(int, const QString&, const QString&, bool, bool) override {}
    void setPosition(int) override {}
    void setText(const QString&) override {}
    void close() override {}
    MainState state() const override { return m_state; }
    void setState(MainState state) override { m_state = state; }
    int slaveAddress() const override { return 1; }
    int transmissionMode() const override { return m_mode; }
    QString modelPanel() const override { return kModelString; }
    void setConnectedModel(const QString&) override {}
    void showCommSetting() override {}

private:
    int m_mode;
    MainState m_state = MainState::Confirmed;
};

platform::Folders scratchFolders(const QString& root)
{
    QDir().mkpath(root + QStringLiteral("/program/ini"));
    QDir().mkpath(root + QStringLiteral("/config"));
    const QDir data(QStringLiteral(VORLANT_DATA_DIR "/ini"));
    for (const QString& name : data.entryList(QDir::Files))
        QFile::copy(data.filePath(name), root + QStringLiteral("/program/ini/") + name);
    return platform::Folders(platform::PathMap(), root + QStringLiteral("/program"), root + QStringLiteral("/config"));
}

// The controller in a thread of its own, as it is outside the PC.
class ControllerThread : public QThread
{
public:
    ControllerThread(const QString& root, int mode, int pace) : m_root(root), m_mode(mode), m_pace(pace) {}
    QString device() // blocks until the terminal is open
    {
        m_ready.acquire();
        return m_device;
    }

protected:
    void run() override
    {
        const platform::SystemColors colors;
        ProgramContext program(platform::PathMap(), scratchFolders(m_root), QProcessEnvironment(), colors);
        ModelCatalogue(program.library()).ensureBuiltIn();
        SimulatedController controller(program.library(), 1, kModelString, 1, m_mode);
        SimulatorLine line(controller, Faults(), m_pace, program.clock());
        line.openTerminal();
        m_device = line.path();
        m_ready.release();
        exec();
    }

private:
    QString m_root;
    int m_mode;
    int m_pace;
    QString m_device;
    std::binary_semaphore m_ready{0};
};

bool measure(int mode, int pace)
{
    const QTemporaryDir controllerDir;
    const QTemporaryDir dir;
    ControllerThread controller(controllerDir.path(), mode, pace);
    controller.start();
    const platform::SystemColors colors;
    ProgramContext program(platform::PathMap(), scratchFolders(dir.path()), QProcessEnvironment(), colors);
    program.ports().assign(1, controller.device());
    ModelCatalogue(program.library()).ensureBuiltIn();
    platform::GridModel grid;
    clsKX kx(program.library());
    kx.setSpread(&grid);
    kx.load(1, &program.library(), kModelString);
    uclComm link(program.ports(), program.clock());
    link.init(1, &program.library());
    Shell shell(mode);
    TransferEngine engine({kx, link, program.settings(), program.traceLog(), shell, shell, shell});
    QElapsedTimer timer;
    timer.start();
    engine.getDataFromKX(nullptr);
    const double wall = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    const double wire = static_cast<double>(engine.lastRead().wireBytes) * kBitsPerByte / pace;
    std::printf("read_all: %s at %d: %.3f s over %.3f s on the wire: %.3f (limit 1.10)\n", mode == 1 ? "ASCII" : "RTU",
                pace, wall, wire, wall / wire);
    controller.quit();
    controller.wait();
    return engine.lastRead().outcome == ReadOutcome::Complete && engine.lastRead().failures == 0;
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
