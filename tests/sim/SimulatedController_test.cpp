#include "SimulatedFixture.h"
#include "Table.h"

namespace {

class Controller : public SimulatedFixture
{};

TEST_F(Controller, AnswersFrames)
{
    for (const QStringList& row : tableRows("sim/frames.tsv")) {
        const auto controller = makeController(0);
        const QByteArray expected = row[2].isEmpty() ? QByteArray() : rtu(row[2].toLatin1().constData());
        EXPECT_EQ(controller->answer(rtu(row[1].toLatin1().constData())).toHex(), expected.toHex())
            << qPrintable(row[0]);
    }
}

TEST_F(Controller, AnswersInAscii)
{
    const auto controller = makeController(1);
    EXPECT_EQ(controller->answer(":010600000005F4\r\n"), ":010600000005F4\r\n");
    EXPECT_EQ(controller->answer(":010600000005F5\r\n"), QByteArray()) << "wrong check value";
}

} // namespace
