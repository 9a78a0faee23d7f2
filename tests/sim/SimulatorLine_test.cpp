#include "SimulatedFixture.h"
#include "SimulatorLine.h"

#include <QCoreApplication>
#include <QSerialPort>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

class Line : public SimulatedFixture
{
protected:
    void serve(int mode, int pace = 0, const char* fault = nullptr)
    {
        controller = makeController(mode);
        Faults faults(1);
        ASSERT_TRUE(fault == nullptr || faults.add(QString::fromLatin1(fault)).ok()) << fault;
        line = std::make_unique<SimulatorLine>(*controller, faults, pace, box.clock);
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
        client.setPortName(line->path());
        ASSERT_TRUE(client.open(QIODevice::ReadWrite));
    }

    void dispatch()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    void send(const QByteArray& bytes)
    {
        client.write(bytes);
        client.flush();
        dispatch();
    }
    QByteArray receive(qsizetype count)
    {
        for (received += client.readAll(); received.size() < count; received += client.readAll())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return received;
    }

    std::unique_ptr<SimulatedController> controller;
    std::unique_ptr<SimulatorLine> line;
    QSerialPort client;
    QByteArray received;
};

TEST_F(Line, ARequestMayComeInPieces)
{
    serve(0);
    const QByteArray request = rtu("01 42 00 00008000 02");
    send(request.left(3));
    EXPECT_EQ(received.size(), 0);
    send(request.mid(3));
    EXPECT_EQ(receive(8).toHex(), rtu("01 42 00 02 0102").toHex());
}

TEST_F(Line, AClientThatWasKilledDoesNotKeepOthersOff)
{
    serve(0);
    client.close();
    const auto openIt = [this] { return ::open(qPrintable(line->path()), O_RDWR | O_NOCTTY); };
    const int killed = openIt();
    ASSERT_EQ(ioctl(killed, TIOCEXCL), 0);
    ::close(killed);
    dispatch();
    const int next = openIt();
    int exclusive = 1;
    ASSERT_EQ(ioctl(next, TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
    ::close(next);
}

TEST_F(Line, ALateReplyComesThoughItIsOvertaken)
{
    serve(0, 0, "delay:8000@every2");
    send(rtu("01 06 0000 0102"));
    const QByteArray first = receive(8);
    send(rtu("01 03 0000 0001"));
    box.clock.advance(7999);
    send(rtu("01 04 0000 0001"));
    EXPECT_EQ(receive(15).mid(8).toHex(), rtu("01 04 02 FFFE").toHex());
    box.clock.advance(1);
    EXPECT_EQ(receive(22).mid(15).toHex(), rtu("01 03 02 0102").toHex());
}

TEST_F(Line, PacedRepliesThatMeetAreBothWhole)
{
    serve(0, 19200);
    send(rtu("01 42 00 0000FBC0 0E"));
    send(rtu("01 06 0000 0102"));
    EXPECT_EQ(receive(28).mid(20).toHex(), rtu("01 06 0000 0102").toHex());
}

TEST_F(Line, ARestartForgetsWhatWasWritten)
{
    serve(0, 0, "reset@every2");
    const QByteArray atStart = controller->state();
    send(rtu("01 42 01 00008000 02 0506"));
    receive(10);
    ASSERT_NE(controller->state(), atStart);
    send(rtu("01 06 0000 0102"));
    EXPECT_EQ(controller->state(), atStart);
    send(rtu("01 03 0000 0001"));
    EXPECT_EQ(receive(17).mid(10).toHex(), rtu("01 03 02 0007").toHex()) << "silent when it restarted, sound again";
}

TEST_F(Line, RefusesSettingsThatADeviceCannotHave)
{
    controller = makeController(0);
    SimulatorLine other(*controller, Faults(1), 0, box.clock);
    const std::tuple<int, const char*, const char*> rows[] = {{12345, "N,8,1", "12345"},
                                                              {13, "N,8,1", "13"}, // the system's code for 9600
                                                              {9600, "N,9,1", "N,9,1"},
                                                              {9600, "E,7,2", ""}}; // not a terminal
    for (const auto& [speed, chara, word] : rows) {
        EXPECT_FALSE(other.openDevice(QStringLiteral("/dev/null"), speed, QLatin1String(chara)));
        const QString error = other.errorText();
        EXPECT_TRUE(!error.isEmpty() && error.contains(QLatin1String(word))) << qPrintable(error);
    }
}

} // namespace
