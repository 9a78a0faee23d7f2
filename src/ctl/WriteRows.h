#pragma once

#include "ChangeList.h"
#include "CommandLine.h"
#include "CommandResult.h"

#include <vector>

class ControllerSession;

// Why a parameter of another class than those of --class is not sent.
QString classNotChosen(ParameterClass kind);

// Sends those of the parameters whose class the command line has chosen, to a controller that was read before, and
// prints of each what became of it, also when the status is not Done. With --dry-run only prints. Refused when a
// parameter that was chosen is not in the controller afterwards.
CommandResult writeRows(ControllerSession& session, const CommandLine& line, const std::vector<ChangeRow>& changes);
