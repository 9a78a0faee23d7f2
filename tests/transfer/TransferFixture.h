#pragma once

#include "ComPorts.h"
#include "IdleClock.h"
#include "RecordingShell.h"
#include "ScreenFixture.h"
#include "SimulatedController.h"
#include "TransferEngine.h"
#include "clsLog.h"
#include "uclComm.h"

#include <QFile>
#include <QHash>

#include <memory>
#include <optional>

// A model and its simulated controller, with the program's link and engine; the line between them is the test's. The
// clock runs while the engine waits, when a test says so.
class TransferFixture : public ScreenFixture
{
protected:
    inline static const QString kModelString = QStringLiteral("KX41000000-10A");

    TransferFixture()
    {
        state.setModel(1, kModelString);
        state.setState(MainState::Confirmed);
        trace.setLogPath(box.machine.folders.program());
        trace.setLogFileName(QStringLiteral("Trc.log"));
        box.context.messages = window;
    }

    // The definition files NAME_screen.ini and NAME_comm.ini, at both ends of the line.
    void loadModel(const char* name, int mode = 0, const QString& controllersModel = kModelString)
    {
        const auto file = [name](const char* end) {
            QFile data(QStringLiteral(VORLANT_TEST_DATA "/transfer/") + QLatin1String(name) + QLatin1String(end));
            EXPECT_TRUE(data.open(QIODevice::ReadOnly)) << qPrintable(data.fileName());
            return data.readAll();
        };
        state.setLine(1, mode);
        load(file("_screen.ini"), file("_comm.ini"), kModelString);
        controller = std::make_unique<SimulatedController>(library, 1, controllersModel, 1, mode);
    }

    void openEngine(const QString& device)
    {
        ports.assign(1, device);
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        engine =
            std::make_unique<TransferEngine>(TransferEngine::Parts{kx, *link, settings, trace, window, window, state});
    }

    // So that pauses and time-outs end without anybody waiting for them.
    void runClockWhileWaiting() { idle.emplace(box.clock, 1000, 2); }
    void touchClock()
    {
        if (idle)
            idle->touch();
    }

    int traceLines(const char* tag)
    {
        return static_cast<int>(content(box.machine.folders.program() + QStringLiteral("\\Trc.log")).count(tag));
    }

    // What the controller holds: "MEM 8000" -> "03", "REG 40001" -> "77".
    QHash<QString, QString> values() const
    {
        QHash<QString, QString> found;
        const QStringList lines = QString::fromLatin1(controller->state()).split(u'\n', Qt::SkipEmptyParts);
        for (const QString& text : lines)
            found.insert(text.section(u' ', 0, 1), text.section(u' ', 2));
        return found;
    }
    // Its memory from an address on, in hexadecimal digits.
    std::string memory(int first, int count) const
    {
        const QHash<QString, QString> held = values();
        QString bytes;
        for (int i = first; i < first + count; ++i)
            bytes += held.value(QStringLiteral("MEM ") + QString::number(i, 16).toUpper());
        return bytes.toStdString();
    }

    RecordingShell window;
    platform::ComPorts ports{QProcessEnvironment()};
    clsLog trace{box.machine};
    ControllerState state{settings};
    std::optional<IdleClock> idle;
    std::unique_ptr<SimulatedController> controller;
    std::unique_ptr<uclComm> link;
    std::unique_ptr<TransferEngine> engine;
};
