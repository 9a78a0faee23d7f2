// Requests and replies against a Modbus slave that knows nothing of this program.

#include "ComPorts.h"
#include "ScriptedController.h"
#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsModbus.h"
#include "uclComm.h"

#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <gtest/gtest.h>
#include <modbus.h>
#include <thread>

namespace {

constexpr int kSlave = 17;
constexpr int kValues = 20; // of each kind
constexpr int kIllegalAddress = 2;

// libmodbus as an RTU slave on a terminal, served by a thread of its own until the object ends.
class IndependentSlave
{
public:
    explicit IndependentSlave(const QString& device)
        : m_context(modbus_new_rtu(device.toLocal8Bit().constData(), 19200, 'N', 8, 1)),
          m_values(modbus_mapping_new(kValues, kValues, kValues, kValues))
    {
        modbus_set_slave(m_context, kSlave);
        modbus_set_indication_timeout(m_context, 0, 50000);
        m_connected = modbus_connect(m_context) == 0;
        m_thread = std::thread([this] { serve(); });
    }

    ~IndependentSlave()
    {
        m_ending = true;
        m_thread.join();
        modbus_close(m_context);
        modbus_free(m_context);
        modbus_mapping_free(m_values);
    }
    IndependentSlave(const IndependentSlave&) = delete;
    IndependentSlave& operator=(const IndependentSlave&) = delete;

    bool isConnected() const { return m_connected; }
    // Only touched by the test while no request is under way.
    modbus_mapping_t& values() { return *m_values; }

private:
    void serve()
    {
        uint8_t request[MODBUS_RTU_MAX_ADU_LENGTH];
        while (!m_ending && m_connected) {
            const int length = modbus_receive(m_context, request);
            if (length > 0)
                modbus_reply(m_context, request, length, m_values);
        }
    }

    modbus_t* m_context;
    modbus_mapping_t* m_values;
    bool m_connected = false;
    std::atomic<bool> m_ending = false;
    std::thread m_thread;
};

// The program's side and the slave's side are two terminals whose far ends are joined.
class Independent : public ::testing::Test
{
protected:
    Independent()
        : programEnd([this](const QByteArray& bytes) { return forward(*slaveEnd, bytes); }),
          slaveEnd(std::make_unique<ScriptedController>([this](const QByteArray& bytes) {
              answered += static_cast<int>(bytes.size());
              return forward(programEnd, bytes);
          })),
          slave(slaveEnd->device()), library(box.context), ports{QProcessEnvironment()}, link(ports, box.clock)
    {
        ports.assign(1, programEnd.device());
        link.init(1, &library);
        master.setSlaveAddress(kSlave);
    }

    static QByteArray forward(ScriptedController& to, const QByteArray& bytes)
    {
        to.send(bytes);
        return {};
    }

    // Sends the request that master holds and gives it the reply.
    bool exchange()
    {
        EXPECT_TRUE(slave.isConnected());
        QByteArray reply;
        QEventLoop wait;
        QObject::connect(&link, &uclComm::RecieveSuccess, &wait, [&](const QByteArray&, const QByteArray& bytes) {
            reply = bytes;
            wait.quit();
        });
        QObject::connect(&link, &uclComm::RecieveError, &wait,
                         [&](const QByteArray&, const QByteArray& bytes, const QString&) {
                             reply = bytes;
                             wait.quit();
                         });
        // An exception is shorter than the reply announced: once it is here, time runs until the link gives up.
        QTimer ticker;
        QObject::connect(&ticker, &QTimer::timeout, &wait, [&] {
            if (answered > 0)
                box.clock.advance(2000);
        });
        ticker.start(2);
        answered = 0;
        EXPECT_EQ(link.sendMsg(master.GetSendMessage(), master.RecvSize()), QString());
        wait.exec();
        return master.SetRecvMessage(reply, static_cast<qint32>(reply.size()) - 1);
    }

    int answered = 0;
    ScriptedController programEnd;
    std::unique_ptr<ScriptedController> slaveEnd;
    IndependentSlave slave;
    TestMachine box;
    clsLibrary library;
    platform::ComPorts ports;
    uclComm link;
    clsModbus master;
};

TEST_F(Independent, ReadsBits)
{
    for (const int i : {0, 2, 9})
        slave.values().tab_bits[i] = 1;
    slave.values().tab_input_bits[4] = 1;
    ASSERT_TRUE(master.ReadDigitalSetValue(1, 10));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(master.DigitalVal(1), 0b00000101);
    EXPECT_EQ(master.DigitalVal(2), 0b00000010);
    ASSERT_TRUE(master.ReadDigitalInputData(10002, 5));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(master.DigitalVal(1), 0b00001000);
}

TEST_F(Independent, ReadsRegisters)
{
    slave.values().tab_registers[3] = 0xFFFE;
    slave.values().tab_registers[4] = 1234;
    slave.values().tab_input_registers[0] = 0x8000;
    ASSERT_TRUE(master.ReadAnalogSetValue(40004, 2));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -2);
    EXPECT_EQ(master.AlalogVal(2), 1234);
    ASSERT_TRUE(master.ReadAnalogInputData(30001, 1));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -32768);
}

TEST_F(Independent, WritesBitAndRegisters)
{
    ASSERT_TRUE(master.WriteDigitalSetValue(6, true));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(slave.values().tab_bits[5], 1);
    ASSERT_TRUE(master.WriteDigitalSetValue(6, false));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(slave.values().tab_bits[5], 0);
    ASSERT_TRUE(master.WriteAnalogSetValue(40008, -5));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(slave.values().tab_registers[7], 0xFFFB);
    ASSERT_TRUE(master.WriteAnalogSetValues(40001, {0, 11, 12, 13}, 3));
    ASSERT_TRUE(exchange()) << master.ErrorCode();
    EXPECT_EQ(slave.values().tab_registers[0], 11);
    EXPECT_EQ(slave.values().tab_registers[2], 13);
    EXPECT_EQ(slave.values().tab_registers[3], 0);
}

TEST_F(Independent, RefusesAddressesThatItLacks)
{
    ASSERT_TRUE(master.ReadAnalogSetValue(40001 + kValues, 1));
    EXPECT_FALSE(exchange());
    EXPECT_EQ(master.ErrorCode(), kIllegalAddress);
    ASSERT_TRUE(master.ReadAnalogSetValue(40001, 1));
    EXPECT_TRUE(exchange()) << "the next request is answered";
}

} // namespace
