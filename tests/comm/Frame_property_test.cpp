#include "ModbusFrame.h"
#include "clsModbus.h"

#include <gtest/gtest.h>
// Needs the test framework before it.
#include <rapidcheck/gtest.h>

namespace {

// In both modes every value of a sound reply arrives, and one turned bit of it is never accepted.
RC_GTEST_PROP(FrameProperty, ASoundReplyArrivesAndADamagedOneDoesNot, ())
{
    clsModbus modbus;
    modbus.setSlaveAddress(*rc::gen::inRange(1, 248));
    modbus.setTransmissionMode(*rc::gen::inRange(0, 2));
    const bool ascii = modbus.TransmissionMode() == 1;
    const auto count = *rc::gen::inRange(1, 121);
    const auto values = *rc::gen::container<std::string>(static_cast<size_t>(count), rc::gen::arbitrary<char>());
    modbus.ReadDirectMemory(*rc::gen::inRange(0, 0xFFFF), count);
    const QByteArray head = QByteArray(1, static_cast<char>(modbus.SlaveAddress())) + QByteArray("\x42\x00", 2);
    QByteArray reply = modbusframe::toWire(head + static_cast<char>(count) + QByteArray::fromStdString(values), ascii);
    QByteArray damaged = reply;
    RC_ASSERT(reply.size() == modbus.RecvSize());
    RC_ASSERT(modbus.SetRecvMessage(reply, modbus.RecvSize()));
    for (int i = 0; i < count; ++i)
        RC_ASSERT(modbus.DigitalVal(i + 1) == static_cast<quint8>(values[static_cast<size_t>(i)]));
    // The line feed at the end of an ASCII frame is not examined.
    const auto place = *rc::gen::inRange<qsizetype>(0, damaged.size() - (ascii ? 1 : 0));
    damaged[place] = static_cast<char>(damaged[place] ^ (1 << *rc::gen::inRange(0, 8)));
    RC_ASSERT_FALSE(modbus.SetRecvMessage(damaged, modbus.RecvSize()));
    RC_ASSERT(modbus.ErrorCode() != 0);
}

} // namespace
