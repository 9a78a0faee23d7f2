#include "ComPorts.h"
#include "MSComm.h"
#include "ScriptedController.h"
#include "SerialServer.h"
#include "ServerAddress.h"
#include "Table.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTimer>
#include <gtest/gtest.h>

#include <sys/socket.h>

using platform::CommEvent;
using platform::MSComm;
using platform::ServerAddress;

namespace {

TEST(ServerAddresses, AreTakenOrRefused)
{
    for (const QStringList& row : tableRows("platform/server_addresses.tsv")) {
        const auto address = ServerAddress::parse(row[0]);
        EXPECT_TRUE(ServerAddress::isMeant(row[0]));
        const QString got = address.ok() ? address.value().host + ' ' + QString::number(address.value().port) : "- 0";
        EXPECT_EQ(got, row[1] + ' ' + row[2]) << qPrintable(row[0]);
        EXPECT_TRUE(row[3] == "-" ? address.ok() : address.error().contains(row[3])) << qPrintable(row[0]);
    }
    EXPECT_FALSE(ServerAddress::isMeant("/dev/ttyUSB0"));
}

class ServerLine : public ::testing::Test
{
protected:
    ServerLine() { server.listen(QHostAddress::LocalHost); }

    void onConnection(std::function<void(QTcpSocket&)> act)
    {
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this, act] {
            peer = server.nextPendingConnection();
            act(*peer);
        });
    }

    bool open(const char* scheme)
    {
        ports.assign(1, QString("%1://localhost:%2").arg(scheme).arg(server.serverPort()));
        return comm.openPort();
    }

    QTcpServer server;
    QTcpSocket* peer = nullptr;
    platform::ComPorts ports{QProcessEnvironment()};
    MSComm comm{ports, nullptr, 300};
    QSignalSpy events{&comm, &MSComm::OnComm};
};

TEST_F(ServerLine, TellsWhyThereIsNoConnection)
{
    const QString closed = QString("tcp://127.0.0.1:%1").arg(SerialServer::freePort());
    const QString silent = QString("rfc2217://127.0.0.1:%1").arg(server.serverPort());
    const std::tuple<QString, const char*> rows[] = {
        {closed, "refuses the connection"},
        {silent, "does not answer the COM port option"},
        {"tcp://no..such..name:4001", "the name of the serial server is not known"},
        {"tcp://255.255.255.255:4001", "cannot be reached"},
        {"tcp://server", "the port number is missing"}};
    for (const auto& [name, reason] : rows) {
        ports.assign(1, name);
        MSComm patient(ports);
        MSComm& line = name == silent ? comm : patient;
        EXPECT_FALSE(line.openPort() || line.PortOpen());
        const QString text = line.errorText();
        EXPECT_TRUE(text.startsWith("COM1 (" + name + ") cannot be opened: ") && text.contains(reason))
            << qPrintable(text);
    }
}

// What a far end may do that is no serial server: opening ends, and nothing is kept.
TEST_F(ServerLine, StrangersInPlaceOfATelnetServer)
{
    const std::tuple<const char*, QByteArray, const char*> rows[] = {
        {"garbage", QByteArray(200000, 'x'), "does not answer the COM port option"},
        {"a subnegotiation without end", QByteArray::fromHex("FFFA2C") + QByteArray(200000, 'x'),
         "does not answer the COM port option"},
        {"requests without end", QByteArray::fromHex("FFFD1F").repeated(50000), "does not answer"},
        {"a refusal", QByteArray::fromHex("FFFE2C"), "refuses the COM port option"}};
    for (const auto& [name, bytes, reason] : rows) {
        SCOPED_TRACE(name);
        server.disconnect();
        onConnection([bytes = bytes](QTcpSocket& socket) { socket.write(bytes); });
        EXPECT_FALSE(open("rfc2217"));
        EXPECT_TRUE(comm.errorText().contains(reason)) << qPrintable(comm.errorText());
    }
    server.disconnect();
    onConnection([](QTcpSocket& socket) { socket.close(); });
    EXPECT_FALSE(open("rfc2217"));
    EXPECT_TRUE(comm.errorText().contains("closed the connection")) << qPrintable(comm.errorText());
}

TEST_F(ServerLine, CarriesBytesUntilTheServerClosesIt)
{
    onConnection([](QTcpSocket&) {});
    ASSERT_TRUE(open("tcp")) << qPrintable(comm.errorText());
    ASSERT_TRUE(peer || server.waitForNewConnection(1000));
    ASSERT_TRUE(QTest::qWaitFor([this] { return peer != nullptr; }));
    comm.setRThreshold(3);
    peer->write("ab\xFF");
    ASSERT_TRUE(events.wait());
    EXPECT_EQ(comm.Input(), "ab\xFF");
    peer->write("late");
    ASSERT_TRUE(peer->waitForBytesWritten());
    comm.discardInput(); // no event has run since: only the operating system has them
    EXPECT_EQ(comm.Input(), "");
    EXPECT_TRUE(comm.Output("request"));
    comm.setRThreshold(0);
    peer->disconnectFromHost();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !comm.PortOpen(); }));
    EXPECT_EQ(comm.Event(), CommEvent::DCB);
    EXPECT_TRUE(comm.errorText().contains("was lost: the serial server closed the connection"))
        << qPrintable(comm.errorText());
    EXPECT_FALSE(comm.Output("x"));
}

// More than the network takes is not kept here; what came of it is told when the request is given up.
TEST_F(ServerLine, AServerThatReadsNothing)
{
    onConnection([](QTcpSocket& socket) {
        socket.setReadBufferSize(1);
        const int least = 1;
        setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_RCVBUF, &least, sizeof least);
    });
    ASSERT_TRUE(open("tcp"));
    int written = 0;
    while (comm.Output(QByteArray(10000, 'x')) && written < 5000)
        ++written;
    EXPECT_LT(written, 5000) << "fifty megabytes are not kept";
    EXPECT_TRUE(comm.errorText().contains("does not answer any more")) << qPrintable(comm.errorText());
}

TEST_F(ServerLine, ClosingEndsTheOpening)
{
    MSComm patient(ports);
    ports.assign(1, QString("rfc2217://localhost:%1").arg(server.serverPort()));
    bool again = true;
    QTimer::singleShot(0, &server, [&] {
        again = patient.openPort(); // which is under way already
        patient.closePort();
    });
    EXPECT_FALSE(patient.openPort() || again);
    EXPECT_TRUE(patient.errorText().endsWith("It was cancelled.")) << qPrintable(patient.errorText());
}

TEST_F(ServerLine, SpeedAndFormatArriveAtTheFarEnd)
{
    const ScriptedController line{[](const QByteArray&) { return QByteArray(); }};
    const SerialServer served(line.device());
    ports.assign(1, served.telnet());
    MSComm patient(ports);
    for (const auto& [settings, speed, stopBits] :
         {std::tuple("19200,N,8,2", B19200, CSTOPB), {"9600,N,8,1", B9600, 0U}}) {
        patient.setSettings(settings);
        ASSERT_TRUE(patient.openPort()) << qPrintable(patient.errorText());
        const int end = ::open(qPrintable(line.device()), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios state{};
        EXPECT_EQ(tcgetattr(end, &state), 0);
        ::close(end);
        EXPECT_EQ(cfgetospeed(&state), static_cast<speed_t>(speed)) << settings;
        EXPECT_EQ(state.c_cflag & CSTOPB, static_cast<tcflag_t>(stopBits)) << settings;
        patient.closePort();
    }
}

} // namespace
