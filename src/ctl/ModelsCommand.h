#pragma once

#include "CommandResult.h"

class clsLibrary;

// `models`: the model catalogue as a table.
CommandResult listModels(clsLibrary& library);
