#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ControllerSession;
class ProgramContext;

// `read`: all parameters of the controller, printed or as a parameter file.
CommandResult readParameters(ProgramContext& program, ControllerSession& session, const CommandLine& line);

// `get`: those that the command line names, in its order.
CommandResult getParameters(ControllerSession& session, const CommandLine& line);
