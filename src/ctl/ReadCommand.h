#pragma once

#include "CommandResult.h"
#include "ControlLink.h"
#include "ControlShell.h"
#include "GridModel.h"
#include "HeadlessMessages.h"
#include "ModelChoice.h"
#include "TransferEngine.h"
#include "clsKX.h"

#include <QObject>
#include <memory>

class ProgramContext;

// `read`: all parameters of the controller. One object, one run. Stricter than the window: a request that got no sound
// answer ends the command, so the output holds either every value or nothing.
class ReadCommand : public QObject
{
    Q_OBJECT

public:
    // All kept by reference.
    ReadCommand(ProgramContext& program, const CommandLine& line, ProgressView& progress);
    ~ReadCommand() override;

    // Returns when the read has ended, dispatching events while it waits.
    CommandResult run();
    // Ends a run that is under way.
    void interrupt();

private:
    CommandResult checkDefinition() const;
    CommandResult checkFile(const QString& name) const;
    CommandResult loadModel();
    void transfer();
    void onAttemptFailed(const QString& entry, int attempt, int maximum, const QString& reason);
    CommandResult result() const;
    QStringList unreadSections() const;
    CommandResult noAnswer() const;
    CommandResult wrongModel() const;

    ProgramContext& m_program;
    const CommandLine& m_line;
    ProgressView& m_progress;
    ControlLink m_controlLink;
    ModelChoice m_model;
    platform::GridModel m_grid;
    clsKX m_kx;
    HeadlessMessages m_messages;
    std::unique_ptr<TransferEngine> m_engine;
    bool m_interrupted = false;
    QString m_lostRequest; // the request that was given up, with the reason
};
