#pragma once

#include <QString>

class ProgramContext;

// What whoever helps needs to know of this program and its machine, as plain English text: versions, ports, settings
// and the last errors. The home folder is "~"; file names that were used are left out.
// windowSystem: such as "xcb"; home: machine path, empty for none.
QString diagnosticsText(ProgramContext& program, const QString& windowSystem, const QString& home);
