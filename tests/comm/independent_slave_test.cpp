// Requests and replies against a Modbus slave that knows nothing of this program.

#include "clsModbus.h"

#include <gtest/gtest.h>
#include <modbus.h>

#include <algorithm>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int kSlave = 17;
constexpr int kValues = 20; // of each kind

// libmodbus as an RTU slave at the far end of a pseudo-terminal.
class Independent : public ::testing::Test
{
protected:
    Independent()
    {
        termios raw{};
        cfmakeraw(&raw);
        EXPECT_EQ(openpty(&m_near, &m_far, nullptr, &raw, nullptr), 0);
        m_context = modbus_new_rtu(ttyname(m_far), 19200, 'N', 8, 1);
        modbus_set_slave(m_context, kSlave);
        modbus_set_indication_timeout(m_context, 5, 0);
        EXPECT_EQ(modbus_connect(m_context), 0);
        master.setSlaveAddress(kSlave);
    }

    ~Independent() override
    {
        modbus_close(m_context);
        modbus_free(m_context);
        modbus_mapping_free(values);
        close(m_near);
        close(m_far);
    }

    // Sends the request that master holds, has it answered, and gives master the reply.
    bool exchange()
    {
        const QByteArray request = master.GetSendMessage();
        EXPECT_EQ(write(m_near, request.constData(), static_cast<size_t>(request.size())), request.size());
        uint8_t received[MODBUS_RTU_MAX_ADU_LENGTH];
        const int length = modbus_receive(m_context, received);
        const int answered = length > 0 ? modbus_reply(m_context, received, length, values) : 0;
        QByteArray reply(std::max(answered, 0), '\0');
        for (qsizetype i = 0; i < reply.size(); ++i)
            EXPECT_EQ(read(m_near, reply.data() + i, 1), 1);
        return master.SetRecvMessage(reply, answered);
    }

    modbus_mapping_t* values = modbus_mapping_new(kValues, kValues, kValues, kValues);
    clsModbus master;

private:
    int m_near = -1;
    int m_far = -1;
    modbus_t* m_context = nullptr;
};

TEST_F(Independent, IsReadInEveryKind)
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
    ASSERT_FALSE(master.ReadAnalogSetValue(40001 + kValues, 1) && exchange());
    EXPECT_EQ(master.ErrorCode(), 2) << "an address that it lacks";
    ASSERT_TRUE(master.ReadAnalogSetValue(40004, 2) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -2);
    EXPECT_EQ(master.AlalogVal(2), 1234);
    ASSERT_TRUE(master.ReadAnalogInputData(30001, 1) && exchange()) << master.ErrorCode();
    EXPECT_EQ(master.AlalogVal(1), -32768);
}

TEST_F(Independent, TakesBitsAndRegisters)
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

} // namespace
