#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ProgramContext;

// `check-definitions`: what is wrong with the definition files of the models that the command line names, or of all
// models of the catalogue. Prints nothing as a table when nothing is. BadFile without a failure line when something is;
// the output holds it then. No file is changed.
CommandResult checkDefinitions(ProgramContext& program, const CommandLine& line);
