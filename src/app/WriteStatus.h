#pragma once

#include "TransferReports.h"
#include "Translator.h"

#include <QDateTime>
#include <QString>

class clsKX;

// How the last write went, as the status bar shows it: "12 written 14:07:09", "3 written 14:07:09, 1 not accepted".
// Empty when nothing is known to have been written and nothing went wrong.
QString writeStatusText(const WriteReport& report, const QDateTime& endedAt, const TranslateText& tran);

// What went wrong, one on a line: parameters by block and name, values as the grid shows them.
QString writeStatusDetails(const WriteReport& report, const clsKX& kx, const TranslateText& tran);
