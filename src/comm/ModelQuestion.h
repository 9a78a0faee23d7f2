#pragma once

#include "RequestChannel.h"

#include <QString>

class clsLibrary;

// The question which model a controller is: for the characters at one of the two addresses where it may hold its model
// string (ModelCodes.h). Order of calls: prepare, exchange, and after a success answer. Both parts are kept by
// reference.
class ModelQuestion
{
public:
    ModelQuestion(RequestChannel& channel, const clsLibrary& library) : m_channel(channel), m_library(library) {}

    // mode: 0 RTU, 1 ASCII. Throws ModbusError for a slave outside 1 to 247.
    void prepare(int slave, int mode, int address);
    // Returns when the answer is there, dispatching events while it waits.
    RequestChannel::Result exchange();
    // What the last sound reply held, whatever it is.
    QString answer() const;

private:
    RequestChannel& m_channel;
    const clsLibrary& m_library;
};
