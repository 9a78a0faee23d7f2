#pragma once

#include "CommandResult.h"
#include "ControlLink.h"
#include "ModelDetection.h"

class ProgramContext;

// `detect`: which model the connected controller is. One object, one run.
class DetectCommand : public QObject
{
    Q_OBJECT

public:
    // Both kept by reference.
    DetectCommand(ProgramContext& program, const CommandLine& line);

    // Returns when the controller has answered or did not, dispatching events while it waits.
    CommandResult run();
    // Ends a run that is under way.
    void interrupt();

private:
    CommandResult result(const Detection& detection, const QStringList& codes) const;

    ProgramContext& m_program;
    ControlLink m_line;
    ModelDetection m_detection;
};
