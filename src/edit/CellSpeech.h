#pragma once

#include "GridModel.h"
#include "Translator.h"

class clsKX;

// What a screen reader says of a cell. The name: block, parameter, value with its unit, and its state; of a block's
// button, block and caption. The description: limits, choices, or why it cannot be changed. Both empty for a cell
// without a parameter.
platform::SpokenCell spokenCell(const clsKX& kx, int col, int row, const TranslateText& tran);
