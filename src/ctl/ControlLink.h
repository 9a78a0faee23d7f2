#pragma once

#include "CommandLine.h"
#include "CommandResult.h"
#include "LastState.h"
#include "uclComm.h"

#include <QString>

class ProgramContext;

// The serial line that a command works on: the settings with the options of the command line in their place. Nothing of
// the options reaches the settings file. Program and command line are kept by reference.
class ControlLink
{
public:
    ControlLink(ProgramContext& program, const CommandLine& line);

    // Fails with the reason and the remedy.
    CommandResult open();

    uclComm& link() { return m_link; }
    const uclComm& link() const { return m_link; }
    const LastState& last() const { return m_last; }
    int slaveAddress() const;
    int transmissionMode() const;
    QString text() const; // "/dev/ttyUSB0 9600,N,8,1 RTU slave 1"

private:
    CommandResult assignPort();
    QString asAskedFor(QString text) const;

    ProgramContext& m_program;
    const CommandLine& m_line;
    LastState m_last;
    uclComm m_link;
};
