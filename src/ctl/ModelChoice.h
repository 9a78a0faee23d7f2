#pragma once

#include "CommandResult.h"
#include "ModelCatalogue.h"

#include <QString>

class ProgramContext;
struct LastState;

// The model that a command works with.
struct ModelChoice
{
    ModelEntry entry;
    QString modelString; // whole model string, decides which objects the model has
};

// Fills the model catalogue in when the settings have none. Fails when the settings file cannot be used.
CommandResult openCatalogue(ProgramContext& program, ModelCatalogue& catalogue);

// wanted: a code of the catalogue, a whole model string, or empty for the model used last. On failure the result says
// why and choice is left as it was.
CommandResult chooseModel(ModelCatalogue& catalogue, const QString& wanted, const LastState& last, ModelChoice& choice);
