#pragma once

#include "CommandResult.h"
#include "OutputFormat.h"

#include <vector>

class clsKX;

// The parameters that make up a set, as the model holds them now: those that can be written. What is only measured
// would differ from one moment to the next.
std::vector<ParameterRow> comparedRows(const clsKX& kx);

// Of two sets of one model: tag, name and both display values of what differs in its stored value, in columns with the
// names of the two sides.
CommandResult compareRows(const std::vector<ParameterRow>& first, const std::vector<ParameterRow>& second,
                          const QStringList& sides, OutputFormat format);
