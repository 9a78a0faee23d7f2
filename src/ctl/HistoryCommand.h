#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ProgramContext;

// `history`: what was written to controllers, the oldest first. What of the journal cannot be read is told beside it.
CommandResult showHistory(ProgramContext& program, const CommandLine& line);
