#pragma once

#include "CommandLine.h"
#include "CommandResult.h"

class ControllerSession;
class ProgramContext;

// `show`: a parameter file, with the model that it names.
CommandResult showFile(ProgramContext& program, const CommandLine& line);

// `write` and `changes`: what differs between a parameter file and the controller, sent as the command line says. Each
// row is printed with what became of it.
CommandResult writeFile(ProgramContext& program, ControllerSession& session, const CommandLine& line);

// `compare`: two parameter files, or one and the controller. Differ when a parameter that can be written differs.
CommandResult compareFiles(ProgramContext& program, const CommandLine& line);
CommandResult compareWithController(ProgramContext& program, ControllerSession& session, const CommandLine& line);
