#pragma once

#include "Result.h"

#include <QString>

class ProgramContext;

// Gives all settings their defaults, from the next start on: the main settings file keeps the catalogue of models and
// the list of languages only. What it held is kept beside it under a name with the date. Returns the machine path of
// that copy; when it fails, the settings are as before.
platform::Result<QString> resetSettings(ProgramContext& program);
