#include "clsModbus.h"

#include "ModbusError.h"
#include "ModbusFrame.h"
#include "Table.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

TEST(Request, IsFramedInBothModes)
{
    using M = clsModbus;
    const struct
    {
        const char* name;
        bool (*build)(M&);
        const char* frame; // binary frame without check value
        int rtuReply;
    } rows[] = {{"Coils", [](M& m) { return m.ReadDigitalSetValue(1, 9); }, "010100000009", 7},
                {"Discretes", [](M& m) { return m.ReadDigitalInputData(10011, 16); }, "0102000A0010", 7},
                {"Holding", [](M& m) { return m.ReadAnalogSetValue(40001, 10); }, "01030000000A", 25},
                {"LastReference", [](M& m) { return m.ReadAnalogSetValue(50000, 120); }, "0103270F0078", 245},
                {"Inputs", [](M& m) { return m.ReadAnalogInputData(30002, 1); }, "010400010001", 7},
                {"WriteCoil", [](M& m) { return m.WriteDigitalSetValue(10000, true); }, "0105270FFF00", 8},
                {"ClearCoil", [](M& m) { return m.WriteDigitalSetValue(1, false); }, "010500000000", 8},
                {"WriteOne", [](M& m) { return m.WriteAnalogSetValue(40002, -2); }, "01060001FFFE", 8},
                {"Write",
                 [](M& m) {
                     return m.WriteAnalogSetValues(40001, {0, 1, -1}, 2);
                 },
                 "011000000002040001FFFF", 8},
                {"ReadMemory", [](M& m) { return m.ReadDirectMemory(0xFBC0, 8); }, "0142000000FBC008", 14},
                {"NegativeAddress", [](M& m) { return m.ReadDirectMemory(-32768, 8); }, "0142000000800008", 14},
                {"WriteMemory", [](M& m) { return m.WriteDirectMemory(0x8000, 3); }, "0142010000800003102030", 10},
                {"ReadFloats", [](M& m) { return m.ReadFloatingData(50001, 2); }, "01460000000002", 14},
                {"Floats",
                 [](M& m) {
                     return m.WriteFloatingData(50003, {0, 1.5F}, 1);
                 },
                 "01470000020001040000C03F", 9}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const QByteArray frame = QByteArray::fromHex(row.frame);
        for (const int mode : {0, 1}) {
            clsModbus modbus;
            modbus.setSlaveAddress(1);
            modbus.setTransmissionMode(mode);
            modbus.setDigitalVals({1, "\x10\x20\x30"});
            EXPECT_EQ(modbus.RecvSize(), 0);
            ASSERT_TRUE(row.build(modbus));
            EXPECT_EQ(modbus.GetSendMessage(), modbusframe::toWire(frame, mode == 1));
            EXPECT_EQ(modbus.SendSize(), mode == 1 ? 2 * (frame.size() + 1) + 3 : frame.size() + 2);
            EXPECT_EQ(modbus.RecvSize(), mode == 1 ? 2 * row.rtuReply + 1 : row.rtuReply);
        }
    }
}

QByteArray rtu(const QByteArray& hex)
{
    return modbusframe::toWire(QByteArray::fromHex(hex), false);
}

TEST(Reply, IsChecked)
{
    for (const QStringList& row : tableRows("comm/replies.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        clsModbus modbus;
        modbus.setSlaveAddress(1);
        modbus.setTransmissionMode(row[1] == u"ascii" ? 1 : 0);
        modbus.ReadAnalogSetValue(40001, 2);
        const QByteArray text = row[2].toLatin1();
        QByteArray bytes = row[1] == u"ascii" ? text : row[1] == u"rtu" ? rtu(text) : QByteArray::fromHex(text);
        EXPECT_EQ(modbus.SetRecvMessage(bytes, static_cast<qint32>(bytes.size())), row[3] == u"0");
        EXPECT_EQ(QString::number(modbus.ErrorCode()), row[3]);
    }
}

TEST(ReplyValues, AreInterpretedByFunction)
{
    clsModbus modbus;
    modbus.setSlaveAddress(1);
    const auto take = [&](const char* hex) {
        QByteArray bytes = rtu(hex);
        return modbus.SetRecvMessage(bytes, static_cast<qint32>(bytes.size()));
    };
    modbus.ReadAnalogSetValue(40001, 2);
    QByteArray bytes = rtu("0103040001FFFE");
    EXPECT_FALSE(modbus.SetRecvMessage(bytes, 10)) << "more than there is";
    ASSERT_TRUE(take("0103040001FFFE"));
    EXPECT_EQ(modbus.AlalogVal(2), -2);
    EXPECT_EQ(modbus.GetRecvMessage(), bytes);
    modbus.ReadFloatingData(50001, 1);
    EXPECT_EQ(modbus.GetRecvMessage().size(), 10) << "as long as the reply that is expected now";
    ASSERT_TRUE(take("014600040000C03F"));
    EXPECT_EQ(modbus.FloatingVal(1), 1.5F);
    modbus.WriteAnalogSetValue(40001, 5);
    EXPECT_FALSE(take("010600000006")) << "the echo differs in its value";
    EXPECT_TRUE(take("010600000005"));
    modbus.WriteFloatingData(50001, {0, 1.0F}, 1);
    EXPECT_TRUE(take("01470000000001"));
}

TEST(Arguments, AreRefusedAndKeepTheRequest)
{
    clsModbus modbus;
    modbus.setSlaveAddress(1);
    modbus.ReadAnalogSetValue(40001, 10);
    const QByteArray before = modbus.GetSendMessage();
    const std::function<void()> refused[] = {[&] { modbus.ReadDigitalSetValue(10001, 1); },
                                             [&] { modbus.ReadDigitalInputData(10000, 1); },
                                             [&] { modbus.ReadAnalogInputData(30001, 0); },
                                             [&] { modbus.ReadAnalogSetValue(50001, 1); },
                                             [&] { modbus.ReadAnalogSetValue(40001, 121); },
                                             [&] { modbus.ReadAnalogSetValue(40001, 0); },
                                             [&] { modbus.WriteAnalogSetValue(40000, 1); },
                                             [&] { modbus.WriteAnalogSetValues(40001, {}, 0); },
                                             [&] { modbus.ReadFloatingData(50000, 1); },
                                             [&] { modbus.ReadFloatingData(50001, 61); },
                                             [&] { modbus.WriteFloatingData(50001, {}, 0); },
                                             [&] { modbus.ReadDirectMemory(0, 121); },
                                             [&] { modbus.WriteDirectMemory(0, 0); },
                                             [&] { modbus.setSlaveAddress(248); },
                                             [&] { modbus.setSlaveAddress(0); }};
    for (const auto& call : refused)
        EXPECT_THROW(call(), ModbusError) << &call - refused;
    EXPECT_FALSE(modbus.WriteDigitalSetValue(0, true));
    EXPECT_FALSE(modbus.WriteDigitalSetValue(10001, true));
    EXPECT_EQ(modbus.GetSendMessage(), before);
    EXPECT_EQ(modbus.SlaveAddress(), 1);
    try {
        modbus.ReadDigitalSetValue(0, 0);
        FAIL();
    } catch (const ModbusError& error) {
        EXPECT_EQ(error.number(), -2147220502);
        EXPECT_EQ(error.description(), u"Reference number is invalid value.");
        EXPECT_EQ(error.source(), u"clsModBus::ReadDigitalSetValue");
    }
}

TEST(Conversions, OfNumbersAndControlCharacters)
{
    for (const auto& [places, value] : {std::pair(0, 1234.0F), std::pair(1, 123.4F), std::pair(2, 12.34F),
                                        std::pair(3, 1.234F), std::pair(4, 0.1234F), std::pair(5, 1234.0F)})
        EXPECT_FLOAT_EQ(clsModbus::IntToFloat(1234, static_cast<qint16>(places)), value) << places;
    EXPECT_EQ(clsModbus::ChangeMsg(QStringLiteral(":01\r\n\x1f \u3042")), u":01<CR><LF><US> <\?\?\?>");
    EXPECT_EQ(clsModbus::ByteToInt(QByteArray::fromHex("0180"), 1), -32768) << "a missing byte counts as 0";
}

} // namespace
