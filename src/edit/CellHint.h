#pragma once

#include "Translator.h"

#include <QString>

class clsKX;

// One line about the current cell for the status bar: between which limits its parameter lies, what it can be chosen
// from, or why it cannot be changed. Empty for a cell without a parameter.
QString cellHint(const clsKX& kx, int col, int row, const TranslateText& tran);
