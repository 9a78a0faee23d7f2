#pragma once

#include "ChangeList.h"
#include "OutputFormat.h"
#include "TransferReports.h"

#include <vector>

// A parameter that a command is to write, and what became of it.
struct WriteRow
{
    ChangeRow change;      // before the write
    bool isChosen = false; // by its class
    SendOutcome outcome = SendOutcome::NotSent;
    QString reason; // why it failed or was not sent
    QString kept;   // shown: what the controller holds at the end; empty when not known
    QString unit;   // of what is shown, in the language in use; empty for none
};

// Columns tag, name, block, class, cause, held, new, outcome, reason and kept. planned: what was chosen would be sent.
QByteArray formatWriteRows(const std::vector<WriteRow>& rows, bool planned, OutputFormat format);

// The parameters that were chosen and are not known to be in the controller, with what to do; empty when all are.
QString writeFailure(const std::vector<WriteRow>& rows);
