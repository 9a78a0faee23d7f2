#pragma once

#include "TransferReports.h"
#include "Translator.h"

#include <QString>

// What went wrong in the last write, as the status bar shows it: "3 not accepted, 1 not sent". Empty when all is
// well.
QString writeStatusText(const WriteReport& report, const TranslateText& tran);

// The parameters and requests behind it, one on a line.
QString writeStatusDetails(const WriteReport& report, const TranslateText& tran);
