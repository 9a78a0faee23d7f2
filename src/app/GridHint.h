#pragma once

#include <QString>

// One sentence for the place of the grid when there is no grid to show; empty when the model has parameters.
// Both files are machine paths.
QString gridHint(const QString& modelString, int itemCount, const QString& screenFile, const QString& settingsFile);
