#pragma once

#include "CommandResult.h"
#include "OutputFormat.h"

#include <vector>

class clsKX;

// The parameters that make up a set, as the model holds them now: those that can be written. What is only measured
// would differ from one moment to the next.
std::vector<ParameterRow> comparedRows(const clsKX& kx);

// Of two sets of one model: tag, name and both display values of what differs in its stored value. sides: the names of
// the two columns; headings: what the table heads them with, empty for their names.
CommandResult compareRows(const std::vector<ParameterRow>& first, const std::vector<ParameterRow>& second,
                          const QStringList& sides, const QStringList& headings, OutputFormat format);
