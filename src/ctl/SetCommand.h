#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ControllerSession;

// `set`: reads the controller, checks every value as the grid would, one after the other, and only then writes them,
// with what they change besides.
CommandResult setParameters(ControllerSession& session, const CommandLine& line);
