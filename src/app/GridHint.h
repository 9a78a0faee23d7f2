#pragma once

#include "Translator.h"

#include <QString>

// One sentence for the place of the grid when there is no grid to show; empty when the model has parameters.
// fault: of the model's definition files, may be empty; screenFile: machine path of the model's definition.
QString gridHint(const QString& modelString, int itemCount, const QString& fault, const QString& screenFile,
                 const TranslateText& tran);
