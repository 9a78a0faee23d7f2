#pragma once

#include "TransferEngine.h"
#include "Translator.h"

#include <QDateTime>
#include <QString>

class clsKX;

// What the grid holds, as the status bar shows it.
struct ReadStatus
{
    MainState state = MainState::NoConnection;
    TransferEngine::Activity activity = TransferEngine::Activity::Idle;
    bool offLine = false;
    bool defaults = false; // all values are the definition's
    int unread = 0;        // parameters without a value from the controller, after a read
    QDateTime readAt;      // end of the last complete read
    ReadReport report;     // of the last read
};

// "not connected", "not read", "reading...", "writing...", "read at 14:07:09", "3 parameters not read".
QString readStatusText(const ReadStatus& status, const TranslateText& tran);

// The requests without an answer and the last reason; empty when there is nothing to explain.
QString readStatusToolTip(const ReadStatus& status, const TranslateText& tran);

// Parameters of the loaded model that no answer has brought.
int countUnread(const clsKX& kx);
