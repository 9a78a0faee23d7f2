#include "clsModbus.h"

#include "ModbusError.h"
#include "ModbusFrame.h"

#include <gtest/gtest.h>

namespace {

struct RequestCase
{
    const char* name;
    bool (*build)(clsModbus&);
    const char* frame; // binary frame without check value
    int rtuReply;
    int asciiReply;
};

void fillBytes(clsModbus& modbus)
{
    for (int i = 1; i <= 3; ++i)
        modbus.setDigitalVal(i, static_cast<quint8>(0x10 * i));
}

TEST(Request, IsFramedInBothModes)
{
    for (const RequestCase& row :
         {RequestCase{"Coils", [](clsModbus& m) { return m.ReadDigitalSetValue(1, 9); }, "010100000009", 7, 15},
          RequestCase{"Discretes", [](clsModbus& m) { return m.ReadDigitalInputData(10011, 16); }, "0102000A0010", 7,
                      15},
          RequestCase{"Holding", [](clsModbus& m) { return m.ReadAnalogSetValue(40001, 10); }, "01030000000A", 25, 51},
          RequestCase{"Inputs", [](clsModbus& m) { return m.ReadAnalogInputData(30002, 1); }, "010400010001", 7, 15},
          RequestCase{"WriteCoil", [](clsModbus& m) { return m.WriteDigitalSetValue(3, true); }, "01050002FF00", 8, 17},
          RequestCase{"WriteRegisters",
                      [](clsModbus& m) {
                          return m.WriteAnalogSetValues(40001, {0, 1, -1}, 2);
                      },
                      "011000000002040001FFFF", 8, 17},
          RequestCase{"ReadMemory", [](clsModbus& m) { return m.ReadDirectMemory(0xFBC0, 8); }, "0142000000FBC008", 14,
                      29},
          RequestCase{"NegativeAddress", [](clsModbus& m) { return m.ReadDirectMemory(-32768, 8); }, "0142000000800008",
                      14, 29},
          RequestCase{"WriteMemory", [](clsModbus& m) { return m.WriteDirectMemory(0x8000, 3); },
                      "01420100008000"
                      "03102030",
                      10, 21},
          RequestCase{"ReadFloats", [](clsModbus& m) { return m.ReadFloatingData(50001, 2); }, "01460000000002", 14,
                      29},
          RequestCase{"WriteFloats",
                      [](clsModbus& m) {
                          return m.WriteFloatingData(50003, {0, 1.5F}, 1);
                      },
                      "01470000020001040000C03F", 9, 19}}) {
        SCOPED_TRACE(row.name);
        const QByteArray frame = QByteArray::fromHex(row.frame);
        for (const int mode : {0, 1}) {
            clsModbus modbus;
            modbus.setSlaveAddress(1);
            modbus.setTransmissionMode(mode);
            fillBytes(modbus);
            ASSERT_TRUE(row.build(modbus));
            EXPECT_EQ(modbus.GetSendMessage(), modbusframe::toWire(frame, mode == 1));
            EXPECT_EQ(modbus.SendSize(), mode == 1 ? 2 * (frame.size() + 1) + 3 : frame.size() + 2);
            EXPECT_EQ(modbus.RecvSize(), mode == 1 ? row.asciiReply : row.rtuReply);
        }
    }
}

TEST(Frame, CheckValuesOfKnownFrames)
{
    EXPECT_EQ(modbusframe::toWire(QByteArray::fromHex("01030000000A"), false), QByteArray::fromHex("01030000000AC5CD"));
    EXPECT_EQ(modbusframe::toWire(QByteArray::fromHex("0142000000FBC008"), false),
              QByteArray::fromHex("0142000000FBC008C3F4"));
    EXPECT_EQ(modbusframe::toWire(QByteArray::fromHex("01030000000A"), true), ":01030000000AF2\r\n");
}

struct ReplyCase
{
    const char* name;
    int mode;
    QByteArray reply;
    int error; // 0: accepted
};

QByteArray rtu(const char* hex)
{
    return modbusframe::toWire(QByteArray::fromHex(hex), false);
}

TEST(Reply, IsChecked)
{
    for (const ReplyCase& row :
         {ReplyCase{"Sound", 0, rtu("0103040001FFFE"), 0}, ReplyCase{"SoundAscii", 1, ":0103040001FFFEFA\r\n", 0},
          ReplyCase{"LowerCaseHex", 1, ":0103040001fffefa\r\n", 10099},
          ReplyCase{"BadLrc", 1, ":0103040001FFFEFB\r\n", 10020},
          ReplyCase{"TwoBytesBadLrc", 1, ":0100\r\n\r\n", 10020}, ReplyCase{"TwoBytes", 1, ":01FF\r\n\r\n", 10099},
          ReplyCase{"Exception", 0, rtu("018302"), 2}, ReplyCase{"Empty", 0, "", 10099},
          ReplyCase{"SwappedCrc", 0, QByteArray::fromHex("0103040001FFFE3B82"), 10019},
          ReplyCase{"OtherSlave", 0, rtu("0203040001FFFE"), 10099},
          ReplyCase{"FewerBytesThanAnnounced", 0, rtu("0103040001"), 10099},
          ReplyCase{"UnknownFunction", 0, rtu("0165000000"), 10099}}) {
        SCOPED_TRACE(row.name);
        clsModbus modbus;
        modbus.setSlaveAddress(1);
        modbus.setTransmissionMode(row.mode);
        modbus.ReadAnalogSetValue(40001, 2);
        QByteArray bytes = row.reply;
        EXPECT_EQ(modbus.SetRecvMessage(bytes, static_cast<qint32>(bytes.size())), row.error == 0);
        EXPECT_EQ(modbus.ErrorCode(), row.error);
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
    ASSERT_TRUE(take("0103040001FFFE"));
    EXPECT_EQ(modbus.AlalogVal(1), 1);
    EXPECT_EQ(modbus.AlalogVal(2), -2);
    EXPECT_EQ(modbus.GetRecvMessage(), rtu("0103040001FFFE"));
    modbus.ReadDirectMemory(0x8000, 2);
    EXPECT_EQ(modbus.GetRecvMessage().size(), 8) << "as long as the reply that is expected now";
    QByteArray bytes = rtu("01420002A1B2");
    EXPECT_FALSE(modbus.SetRecvMessage(bytes, 9)) << "more than there is";
    ASSERT_TRUE(take("01420002A1B2"));
    EXPECT_EQ(modbus.DigitalVal(2), 0xB2);
    modbus.ReadFloatingData(50001, 1);
    ASSERT_TRUE(take("014600040000C03F"));
    EXPECT_EQ(modbus.FloatingVal(1), 1.5F);
    modbus.WriteAnalogSetValue(40001, 5);
    EXPECT_FALSE(take("010600000006")) << "the echo differs in its value";
    EXPECT_TRUE(take("010600000005"));
    modbus.WriteFloatingData(50001, {0, 1.0F}, 1);
    EXPECT_TRUE(take("014700"
                     "0000"
                     "0001"));
}

TEST(Arguments, AreRefusedAndKeepTheRequest)
{
    clsModbus modbus;
    modbus.setSlaveAddress(1);
    modbus.ReadAnalogSetValue(40001, 10);
    const QByteArray before = modbus.GetSendMessage();
    EXPECT_THROW(modbus.ReadAnalogSetValue(50001, 1), ModbusError);
    EXPECT_THROW(modbus.ReadAnalogSetValue(40001, 121), ModbusError);
    EXPECT_THROW(modbus.ReadFloatingData(50001, 61), ModbusError);
    EXPECT_THROW(modbus.setSlaveAddress(248), ModbusError);
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

TEST(Slave, AnswersByEvents)
{
    clsModbus slave;
    slave.setMasterMode(true);
    slave.setSlaveAddress(1);
    bool supports = true;
    QObject::connect(&slave, &clsModbus::FunctionCodeSupported, [&](int, bool& supported) { supported = supports; });
    QObject::connect(&slave, &clsModbus::ReadHoldingRegisters, [&](int start, int quantity, bool& illegal) {
        illegal = start != 0;
        if (!illegal)
            slave.ResponsReadHoldingRegisters(2 * quantity, {0, 7, -1});
    });
    const auto ask = [&](const char* hex) {
        QByteArray bytes = rtu(hex);
        EXPECT_FALSE(slave.SetRecvMessage(bytes, static_cast<qint32>(bytes.size())));
        return slave.GetSendMessage();
    };
    EXPECT_EQ(ask("010300000002"), rtu("0103040007FFFF"));
    EXPECT_EQ(ask("010300010002"), rtu("018302"));
    EXPECT_EQ(ask("010300000000"), rtu("018303"));
    EXPECT_EQ(ask("0110000000020300010001"), rtu("019003")) << "byte count and quantity disagree";
    supports = false;
    EXPECT_EQ(ask("010300000002"), rtu("018301"));
    EXPECT_EQ(ask("01C800000002"), rtu("018301")) << "no response, as none could name the function code";
    EXPECT_EQ(slave.RecvSize(), 0);
}

} // namespace
