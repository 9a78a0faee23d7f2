#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ProgramContext;

// `backups`: what was kept before each write, of all models or of one, the newest first. Files that cannot be read are
// left out; the failure says how many, with the status Done.
CommandResult listBackups(ProgramContext& program, const CommandLine& line);
