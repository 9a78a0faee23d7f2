#include "ModbusFrame.h"
#include "clsModbus.h"

#include <gtest/gtest.h>
// Needs the test framework before it.
#include <rapidcheck/gtest.h>

namespace {

// A reply to a read of bytes, as a controller sends it in the mode of the request.
QByteArray replyTo(const clsModbus& modbus, const std::vector<quint8>& values)
{
    QByteArray frame;
    frame += static_cast<char>(modbus.SlaveAddress());
    frame += QByteArray("\x42\x00", 2);
    frame += static_cast<char>(values.size());
    for (const quint8 value : values)
        frame += static_cast<char>(value);
    return modbusframe::toWire(frame, modbus.TransmissionMode() == 1);
}

void askFor(clsModbus& modbus, size_t count)
{
    modbus.setSlaveAddress(*rc::gen::inRange(1, 248));
    modbus.setTransmissionMode(*rc::gen::inRange(0, 2));
    modbus.ReadDirectMemory(*rc::gen::inRange(0, 0xFFFF), static_cast<qint32>(count));
}

std::vector<quint8> someValues()
{
    const auto count = *rc::gen::inRange<size_t>(1, 121);
    return *rc::gen::container<std::vector<quint8>>(count, rc::gen::arbitrary<quint8>());
}

RC_GTEST_PROP(FrameProperty, EveryValueOfASoundReplyArrives, ())
{
    clsModbus modbus;
    const auto values = someValues();
    askFor(modbus, values.size());
    QByteArray reply = replyTo(modbus, values);
    RC_ASSERT(reply.size() == modbus.RecvSize());
    RC_ASSERT(modbus.SetRecvMessage(reply, static_cast<qint32>(reply.size())));
    for (size_t i = 0; i < values.size(); ++i)
        RC_ASSERT(modbus.DigitalVal(static_cast<int>(i) + 1) == values[i]);
}

RC_GTEST_PROP(FrameProperty, OneTurnedBitIsNeverAccepted, ())
{
    clsModbus modbus;
    const auto values = someValues();
    askFor(modbus, values.size());
    QByteArray reply = replyTo(modbus, values);
    // The line feed at the end of an ASCII frame is not examined.
    const bool ascii = modbus.TransmissionMode() == 1;
    const auto place = *rc::gen::inRange<qsizetype>(0, reply.size() - (ascii ? 1 : 0));
    reply[place] = static_cast<char>(reply[place] ^ (1 << *rc::gen::inRange(0, 8)));
    RC_ASSERT_FALSE(modbus.SetRecvMessage(reply, static_cast<qint32>(reply.size())));
    RC_ASSERT(modbus.ErrorCode() != 0);
}

} // namespace
