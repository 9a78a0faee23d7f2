#pragma once

#include "FileModel.h"
#include "LastState.h"
#include "SimulatorProcess.h"

#include <QObject>

#include <functional>
#include <optional>

class ControllerState;
class MessagePresenter;
class ParameterFiles;
class ProgramContext;
class TransferEngine;
class uclComm;

// The simulated controller in place of a real one: started, connected to, and read. While it is connected it stands in
// for the port of the settings, which keep nothing of it. When it ends by itself, the port of the settings is back and
// the data in the grid count as no controller's. All parts are kept by reference.
class SimulatorSession : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        ControllerState& controller;
        uclComm& link;
        TransferEngine& engine;
        ParameterFiles& files;
        MessagePresenter& questions;
        std::function<bool()> isLineFree; // no transfer, and no window that holds the port
    };

    explicit SimulatorSession(const Parts& parts, QObject* parent = nullptr);

    // Asks about changes that would be lost; nothing happens while the line is not free. Failures are told.
    void start();
    void leave();  // another controller was chosen: the simulator ends
    void settle(); // the line may be free again
    // What the next start is to find: the model that was selected, even when the last read found another controller,
    // for the grid belongs to it. A trial leaves no model behind.
    LastState lastState() const;
    SimulatorProcess& process() { return m_process; }

Q_SIGNALS:
    void modelChosen(int modelNumber, const QString& modelString); // the grid is of this model when it returns
    void ended();

private:
    void connectToIt();
    void restorePort(); // of the settings
    void tell(const QString& reason);

    Parts m_parts;
    SimulatorProcess m_process;
    std::optional<FileModel> m_before; // since a trial, until another controller is chosen
};
