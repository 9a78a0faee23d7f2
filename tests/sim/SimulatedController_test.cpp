#include "SimulatedFixture.h"

namespace {

struct FrameRow
{
    const char* name;
    const char* request; // without check value
    const char* reply;   // empty: silence
};

class Frames : public SimulatedFixture, public ::testing::WithParamInterface<FrameRow>
{};

TEST_P(Frames, AreAnswered)
{
    const auto controller = makeController(0);
    const QByteArray expected = *GetParam().reply == '\0' ? QByteArray() : rtu(GetParam().reply);
    EXPECT_EQ(controller->answer(rtu(GetParam().request)).toHex(), expected.toHex());
}

INSTANTIATE_TEST_SUITE_P(Requests, Frames,
                         ::testing::Values(FrameRow{"Coils", "01 01 0000 0001", "01 01 01 00"},
                                           FrameRow{"Discretes", "01 02 0000 0001", "01 02 01 01"},
                                           FrameRow{"Holdings", "01 03 0000 0001", "01 03 02 0007"},
                                           FrameRow{"Inputs", "01 04 0000 0001", "01 04 02 FFFE"},
                                           FrameRow{"WriteCoil", "01 05 0000 FF00", "01 05 0000 FF00"},
                                           FrameRow{"WriteRegister", "01 06 0000 0102", "01 06 0000 0102"},
                                           FrameRow{"WriteRegisters", "01 10 0000 0001 02 0304", "01 10 0000 0001"},
                                           FrameRow{"ReadMemory", "01 42 00 00008000 02", "01 42 00 02 0102"},
                                           FrameRow{"ModelString", "01 42 00 0000FBC0 05", "01 42 00 05 4B58343130"},
                                           FrameRow{"WriteMemory", "01 42 01 00008000 02 0506", "01 42 01 00008000 02"},
                                           FrameRow{"ReadFloat", "01 46 00 0000 0001", "01 46 00 04 0000C03F"},
                                           FrameRow{"WriteFloat", "01 47 00 0000 0001 04 00002041",
                                                    "01 47 00 0000 0001"},
                                           FrameRow{"UnknownRegister", "01 03 0005 0001", "01 83 02"},
                                           FrameRow{"MemoryBehindTheEnd", "01 42 00 00008006 04", "01 C2 02"},
                                           FrameRow{"MemoryTooMuch", "01 42 00 00008000 79", "01 C2 03"},
                                           FrameRow{"UnknownFloat", "01 46 00 0009 0001", "01 C6 02"},
                                           FrameRow{"UnknownFunction", "01 08 0000 0000", "01 88 01"},
                                           FrameRow{"OtherSlave", "02 03 0000 0001", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

class Controller : public SimulatedFixture
{};

TEST_F(Controller, KeepsWhatIsWritten)
{
    const auto controller = makeController(0);
    controller->answer(rtu("01 42 01 00008000 02 0506"));
    controller->answer(rtu("01 47 00 0000 0001 04 00002041"));
    controller->answer(rtu("01 06 0000 0102"));
    controller->answer(rtu("01 05 0000 FF00"));
    const QByteArray state = controller->state();
    for (const char* line : {"MEM 8000 05\n", "MEM 8001 06\n", "MEM 8004 41\n", "MEM 8005 20\n", "REG 40001 258\n",
                             "COIL 1 1\n", "IREG 30001 -2\n"})
        EXPECT_TRUE(state.contains(line)) << line << state.toStdString();
}

TEST_F(Controller, SilentOnDamagedFrames)
{
    const auto controller = makeController(0);
    QByteArray damaged = rtu("01 03 0000 0001");
    damaged[3] = '\x01';
    EXPECT_EQ(controller->answer(damaged), QByteArray());
    EXPECT_EQ(controller->answer(rtu("01 03 0000 0001").left(5)), QByteArray());
    EXPECT_EQ(controller->answer(QByteArray()), QByteArray());
}

TEST_F(Controller, AnswersInAscii)
{
    const auto controller = makeController(1);
    EXPECT_EQ(controller->answer(":010600000005F4\r\n"), ":010600000005F4\r\n");
    EXPECT_EQ(controller->answer(":010600000005F5\r\n"), QByteArray()) << "wrong check value";
}

TEST_F(Controller, ForcedExceptionCarriesNothingOut)
{
    const auto controller = makeController(0);
    const QByteArray atStart = controller->state();
    EXPECT_EQ(controller->answer(rtu("01 03 0000 0001"), 6).toHex(), rtu("01 83 06").toHex());
    EXPECT_EQ(controller->answer(rtu("01 06 0000 0102"), 6).toHex(), rtu("01 86 06").toHex());
    EXPECT_EQ(controller->answer(rtu("01 42 01 00008000 02 0506"), 1).toHex(), rtu("01 C2 01").toHex());
    EXPECT_EQ(controller->answer(rtu("02 03 0000 0001"), 6), QByteArray()) << "another slave's request";
    EXPECT_EQ(controller->state(), atStart);
    EXPECT_EQ(controller->answer(rtu("01 06 0000 0102")).toHex(), rtu("01 06 0000 0102").toHex());
}

} // namespace
