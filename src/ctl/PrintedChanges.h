#pragma once

#include "CommandResult.h"
#include "OutputFormat.h"

class clsKX;

// What a write would change, as rows: tag, name, block, class, held and new value. Nothing in a table without changes.
CommandResult printedChanges(const clsKX& kx, OutputFormat format);
