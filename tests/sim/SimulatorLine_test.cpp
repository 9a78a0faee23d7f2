#include "SimulatedFixture.h"
#include "SimulatorLine.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

class Line : public SimulatedFixture
{
protected:
    ~Line() override
    {
        if (client >= 0)
            close(client);
    }

    void serve(int mode, int pace = 0, const char* fault = nullptr)
    {
        controller = makeController(mode);
        Faults faults(1);
        QString error;
        ASSERT_TRUE(fault == nullptr || faults.add(QString::fromLatin1(fault), error)) << qPrintable(error);
        line = std::make_unique<SimulatorLine>(*controller, faults, pace, box.clock);
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
        client = open(qPrintable(line->path()), O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_GE(client, 0);
        notifier = std::make_unique<QSocketNotifier>(client, QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
            char bytes[256];
            const ssize_t count = read(client, bytes, sizeof bytes);
            if (count > 0)
                received.append(bytes, static_cast<qsizetype>(count));
            wait.quit();
        });
    }

    void send(const QByteArray& bytes)
    {
        ASSERT_EQ(write(client, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    QByteArray receive(qsizetype count)
    {
        while (received.size() < count)
            wait.exec();
        return received;
    }

    std::unique_ptr<SimulatedController> controller;
    std::unique_ptr<SimulatorLine> line;
    std::unique_ptr<QSocketNotifier> notifier;
    QEventLoop wait;
    QByteArray received;
    int client = -1;
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
    const int killed = open(qPrintable(line->path()), O_RDWR | O_NOCTTY);
    int exclusive = 0;
    ASSERT_EQ(ioctl(killed, TIOCEXCL), 0);
    ASSERT_EQ(ioctl(client, TIOCGEXCL, &exclusive), 0);
    ASSERT_EQ(exclusive, 1);
    close(killed);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    ASSERT_EQ(ioctl(client, TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
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
    EXPECT_FALSE(other.openDevice(QStringLiteral("/dev/null"), 12345, QStringLiteral("N,8,1")));
    EXPECT_TRUE(other.errorText().contains(QStringLiteral("12345"))) << qPrintable(other.errorText());
    EXPECT_FALSE(other.openDevice(QStringLiteral("/dev/null"), 9600, QStringLiteral("N,9,1")));
    EXPECT_TRUE(other.errorText().contains(QStringLiteral("N,9,1"))) << qPrintable(other.errorText());
    EXPECT_FALSE(other.openDevice(QStringLiteral("/dev/null"), 9600, QStringLiteral("E,7,2")));
    EXPECT_FALSE(other.errorText().isEmpty()) << "not a terminal";
}

} // namespace
