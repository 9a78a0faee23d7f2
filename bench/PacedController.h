#pragma once

#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "RecordingShell.h"
#include "SimulatedController.h"
#include "SimulatorLine.h"
#include "TransferEngine.h"
#include "uclComm.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <functional>
#include <memory>
#include <semaphore>

// A simulated KX410 at the pace of a real wire, and a program connected to it: what the measures of whole transfers
// share.
namespace paced {

constexpr double kBitsPerByte = 10;
inline const QString kModelString = QStringLiteral("KX41000000-10A");

inline platform::Folders scratchFolders(const QString& root)
{
    QDir().mkpath(root + QStringLiteral("/config"));
    for (const QString& folder : {QStringLiteral("/ini/"), QStringLiteral("/Lang/")}) {
        QDir().mkpath(root + QStringLiteral("/program") + folder);
        const QDir data(QStringLiteral(VORLANT_DATA_DIR) + folder);
        for (const QString& name : data.entryList(QDir::Files))
            QFile::copy(data.filePath(name), root + QStringLiteral("/program") + folder + name);
    }
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

// Controller and program, connected; mode 0 RTU, 1 ASCII.
class Connection
{
public:
    // server, if there is one: starts a serial server on the controller's device and gives its name.
    Connection(int mode, int pace, const std::function<QString(const QString& device)>& server = {})
        : m_controller(m_controllerDir.path(), mode, pace),
          program(platform::PathMap(), scratchFolders(m_dir.path()), QProcessEnvironment(), m_colors),
          kx(program.library()), link(program.ports(), program.clock()), m_state(program.settings())
    {
        // As in a window that is up: the shipped texts are there, and none is missing.
        program.context().languageFile = QStringLiteral("EN.txt");
        program.library().tranStr(QStringLiteral("OK"));
        m_controller.start();
        const QString device = m_controller.device();
        program.ports().assign(1, server ? server(device) : device);
        ModelCatalogue(program.library()).ensureBuiltIn();
        m_state.setModel(1, kModelString);
        m_state.setLine(1, mode);
        m_state.setState(MainState::Confirmed);
        kx.setSpread(&m_grid);
        kx.load(1, &program.library(), kModelString);
        link.init(1, &program.library());
        engine = std::make_unique<TransferEngine>(
            TransferEngine::Parts{kx, link, program.settings(), program.traceLog(), m_shell, m_shell, m_state});
    }
    ~Connection()
    {
        m_controller.quit();
        m_controller.wait();
        for (const QString& message : m_shell.messages)
            std::fprintf(stderr, "%s\n", qPrintable(message));
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

private:
    QTemporaryDir m_controllerDir;
    QTemporaryDir m_dir;
    platform::SystemColors m_colors;
    platform::GridModel m_grid;
    ControllerThread m_controller;

public:
    ProgramContext program;
    clsKX kx;
    uclComm link;
    std::unique_ptr<TransferEngine> engine;

private:
    RecordingShell m_shell;
    ControllerState m_state;
};

} // namespace paced
