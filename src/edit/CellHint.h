#pragma once

#include "Translator.h"

#include <QString>

class clsData;
class clsKX;

// The parameter's name in the language in use; its tag when it has none.
QString shownName(const clsData& item, const TranslateText& tran);

// Why the parameter, called subject, takes no entry in its cell; empty when it does.
QString closedHint(const clsKX& kx, const clsData& item, const QString& subject, const TranslateText& tran);

// One line about the current cell for the status bar: between which limits its parameter lies, what it can be chosen
// from, or why it cannot be changed. Empty for a cell without a parameter.
QString cellHint(const clsKX& kx, int col, int row, const TranslateText& tran);
