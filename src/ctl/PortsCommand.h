#pragma once

#include "ComPorts.h"
#include "CommandResult.h"

// `ports`: every COM name that stands for a device, plugged in or not, then the devices for which no number is left.
CommandResult listPorts(const platform::ComPorts& ports);
// The failure of a machine without ports, with the remedy.
CommandResult noPorts();
