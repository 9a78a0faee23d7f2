#pragma once

#include "ComPorts.h"
#include "CommandResult.h"

// `ports`: every COM name that stands for a device, then the devices that no COM name reaches.
CommandResult listPorts(const platform::ComPorts& ports);
// The failure of a machine without ports, with the remedy.
CommandResult noPorts();
