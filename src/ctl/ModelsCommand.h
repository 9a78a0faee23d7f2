#pragma once

#include "CommandResult.h"

class ProgramContext;

// `models`: the model catalogue as a table.
CommandResult listModels(ProgramContext& program);
