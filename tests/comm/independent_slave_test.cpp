// Requests and replies against a Modbus slave that knows nothing of this program.

#include "clsModbus.h"

#include <gtest/gtest.h>
#include <modbus.h>

#include <atomic>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kSlave = 17;
constexpr int kValues = 20; // of each kind
constexpr int kIllegalAddress = 2;
constexpr int kPatienceMs = 5000;
constexpr int kEndMs = 50; // of silence behind a reply: an exception is shorter than what was announced

// libmodbus as an RTU slave at the far end of a pseudo-terminal, served by a thread of its own.
class Independent : public ::testing::Test
{
protected:
    Independent()
    {
        char name[128] = {};
        termios raw{};
        cfmakeraw(&raw);
        EXPECT_EQ(openpty(&m_near, &m_far, name, &raw, nullptr), 0);
        m_context = modbus_new_rtu(name, 19200, 'N', 8, 1);
        modbus_set_slave(m_context, kSlave);
        modbus_set_indication_timeout(m_context, 0, 50000);
        EXPECT_EQ(modbus_connect(m_context), 0);
        m_thread = std::thread([this] {
            uint8_t request[MODBUS_RTU_MAX_ADU_LENGTH];
            while (!m_ending) {
                const int length = modbus_receive(m_context, request);
                if (length > 0)
                    modbus_reply(m_context, request, length, values);
            }
        });
        master.setSlaveAddress(kSlave);
    }

    ~Independent() override
    {
        m_ending = true;
        m_thread.join();
        modbus_close(m_context);
        modbus_free(m_context);
        modbus_mapping_free(values);
        close(m_near);
        close(m_far);
    }

    // Sends the request that master holds and gives it the reply.
    bool exchange()
    {
        const QByteArray request = master.GetSendMessage();
        EXPECT_EQ(write(m_near, request.constData(), static_cast<size_t>(request.size())), request.size());
        QByteArray reply;
        pollfd arriving{m_near, POLLIN, 0};
        while (poll(&arriving, 1, reply.isEmpty() ? kPatienceMs : kEndMs) > 0) {
            char bytes[256];
            const ssize_t count = read(m_near, bytes, sizeof bytes);
            reply.append(bytes, static_cast<qsizetype>(count));
        }
        return master.SetRecvMessage(reply, static_cast<qint32>(reply.size()));
    }

    // Only touched by the test while no request is under way.
    modbus_mapping_t* values = modbus_mapping_new(kValues, kValues, kValues, kValues);
    clsModbus master;

private:
    int m_near = -1;
    int m_far = -1;
    modbus_t* m_context = nullptr;
    std::atomic<bool> m_ending = false;
    std::thread m_thread;
};

TEST_F(Independent, ReadsEveryKind)
{
    for (const int i : {0, 2, 9})
        values->tab_bits[i] = 1;
    values->tab_input_bits[4] = 1;
    values->tab_registers[3] = 0xFFFE;
    values->tab_registers[4] = 1234;
    values->tab_input_registers[0] = 0x8000;
    ASSERT_TRUE(master.ReadDigitalSetValue(1, 10) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.DigitalVal(1) | master.DigitalVal(2) << 8, 0b10'00000101);
    ASSERT_TRUE(master.ReadDigitalInputData(10002, 5) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.DigitalVal(1), 0b00001000);
    ASSERT_TRUE(master.ReadAnalogSetValue(40004, 2) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -2);
    EXPECT_EQ(master.AlalogVal(2), 1234);
    ASSERT_TRUE(master.ReadAnalogInputData(30001, 1) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -32768);
}

TEST_F(Independent, WritesBitAndRegisters)
{
    for (const bool on : {true, false}) {
        ASSERT_TRUE(master.WriteDigitalSetValue(6, on) && exchange()) << master.ErrorCode();
        EXPECT_EQ(values->tab_bits[5], on ? 1 : 0);
    }
    ASSERT_TRUE(master.WriteAnalogSetValue(40008, -5) && exchange()) << master.ErrorCode();
    EXPECT_EQ(values->tab_registers[7], 0xFFFB);
    ASSERT_TRUE(master.WriteAnalogSetValues(40001, {0, 11, 12, 13}, 3) && exchange()) << master.ErrorCode();
    EXPECT_EQ((std::vector<int>(values->tab_registers, values->tab_registers + 4)), (std::vector{11, 12, 13, 0}));
}

TEST_F(Independent, RefusesAddressesThatItLacks)
{
    ASSERT_TRUE(master.ReadAnalogSetValue(40001 + kValues, 1));
    EXPECT_FALSE(exchange());
    EXPECT_EQ(master.ErrorCode(), kIllegalAddress);
    EXPECT_TRUE(master.ReadAnalogSetValue(40001, 1) && exchange()) << "the next request is answered";
}

} // namespace
