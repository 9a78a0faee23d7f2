#pragma once

#include "clsModbus.h"

#include <QString>

// A read command of a comm file: what it is called there, in the trace log, and on the line.
struct ReadCommand
{
    const char16_t* name; // compared exactly
    const char16_t* traceTag;
    bool (clsModbus::*build)(qint32 address, qint32 count);
    bool hexAddress; // the address text is hexadecimal without prefix, else a decimal reference number
    quint8 functionCode;
};

// Null for a name that is no read command.
const ReadCommand* findReadCommand(const QString& name);
