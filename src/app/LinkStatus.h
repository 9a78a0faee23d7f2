#pragma once

#include "Translator.h"

#include <QString>

// The serial link as the status bar shows it.
struct LinkStatus
{
    bool offLine = false;  // the settings switch communication off
    bool readOnly = false; // nothing is written to a controller
    bool open = false;
    int port = 1;
    QString device; // "/dev/ttyUSB0"; empty: COMn stands for nothing
    QString speed;
    QString chara;
    int transmissionMode = 0; // 0 RTU, 1 ASCII
    int slaveAddress = 1;
    QString error;          // why it is not open, with the remedy
    bool deferred = false;  // a serial server that the next request connects to
    bool lost = false;      // it was open, and is looked for
    bool back = false;      // it was lost, and nothing was sent since
    bool simulator = false; // it stands in for the port
};

// "COM1 /dev/ttyUSB0 9600,N,8,1 RTU slave 1, read only", the simulator, or why there is no link and what helps.
QString linkStatusText(const LinkStatus& link, const TranslateText& tran);
