#include "ChildProcess.h"
#include "ComPorts.h"
#include "MSComm.h"
#include "PortLock.h"
#include "ScriptedController.h"
#include "Table.h"

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

using platform::CommEvent;
using platform::ComPort;
using platform::ComPorts;
using platform::MSComm;
using platform::PortLock;

namespace {

const QByteArray kNothing;

QByteArray silence(const QByteArray&)
{
    return kNothing;
}

// The machine's ports in a fixed and unsorted order.
QVector<ComPort> machine()
{
    return {{QStringLiteral("/dev/ttyS0"), QString()},
            {QStringLiteral("/dev/ttyUSB10"), QStringLiteral("ten")},
            {QStringLiteral("/dev/ttyUSB2"), QStringLiteral("two")}};
}

TEST(PortSource, GivesDeviceOfCom)
{
    for (const QStringList& row : tableRows("platform/com_ports.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        const auto field = [&row](int i) { return row[i] == u"-" ? QString() : row[i]; };
        QProcessEnvironment environment;
        if (!field(2).isEmpty())
            environment.insert(QStringLiteral("VORLANT_COM1"), row[2]);
        ComPorts ports(
            environment, [&](const QString& key) { return key == u"COM1" ? field(3) : QString(); }, machine);
        if (!field(4).isEmpty())
            ports.assign(1, row[4]);
        EXPECT_EQ(ports.resolve(row[1].toInt()).device, field(5));
        EXPECT_EQ(ports.resolve(row[1].toInt()).description, field(6));
    }
}

TEST(Settings, AreTakenOrLeft)
{
    const ComPorts ports{QProcessEnvironment()};
    MSComm comm(ports);
    for (const char* text : {"19200,E,7,2", " 1200 , n , 8 , 1 "}) {
        EXPECT_TRUE(comm.setSettings(QLatin1String(text))) << text;
        EXPECT_EQ(comm.Settings(), QLatin1String(text));
    }
    for (const char* text : {"9600,N,8", "fast,N,8,1", "9600,X,8,1", "9600,N,9,1", ""}) {
        EXPECT_FALSE(comm.setSettings(QLatin1String(text))) << text;
        EXPECT_EQ(comm.Settings(), u" 1200 , n , 8 , 1 ");
    }
}

class SerialControl : public ::testing::Test
{
protected:
    SerialControl() : line(silence), ports{QProcessEnvironment()}, comm(ports), events(&comm, &MSComm::OnComm)
    {
        ports.assign(1, line.device());
        ports.assign(2, QStringLiteral("/dev/no-such-adapter"));
        ports.assign(3, QStringLiteral("/dev/null"));
    }

    QString failure(int number)
    {
        comm.setCommPort(number);
        EXPECT_FALSE(comm.openPort());
        EXPECT_FALSE(comm.PortOpen());
        return comm.errorText();
    }

    ScriptedController line;
    ComPorts ports;
    MSComm comm;
    QSignalSpy events;
};

TEST_F(SerialControl, TellsWhyAPortCannotBeOpened)
{
    EXPECT_TRUE(failure(2).contains(u"COM2 (/dev/no-such-adapter)")) << qPrintable(failure(2));
    EXPECT_TRUE(failure(2).contains(u"plug the adapter in"));
    EXPECT_TRUE(failure(3).contains(u"COM3 (/dev/null)")) << qPrintable(failure(3));
    EXPECT_TRUE(failure(98).contains(u"no such port"));
    comm.setCommPort(1);
    EXPECT_TRUE(comm.openPort()) << qPrintable(comm.errorText());
    EXPECT_TRUE(comm.errorText().isEmpty());
}

TEST_F(SerialControl, LockFilesOfNobody)
{
    const QByteArray lock = QFile::encodeName(PortLock::of(line.device()).file);
    comm.setCommPort(1);
    ASSERT_EQ(mkfifo(lock.constData(), 0600), 0);
    const QString reason = failure(1);
    ASSERT_EQ(unlink(lock.constData()), 0);
    EXPECT_TRUE(reason.contains(QFile::decodeName(lock) + QStringLiteral(" is in the way"))) << qPrintable(reason);

    QFile file(QFile::decodeName(lock));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("99999999\nvorlant\n");
    file.close();
    // In a folder with the sticky bit a user cannot take over what another one left.
    EXPECT_TRUE(geteuid() != 0 || trueAsOtherUser([this] { return failure(1).contains(u"left by process 99999999"); }));
    QFile removal(file.fileName() + QStringLiteral(".rmlock")); // of one that was killed while it took a lock over
    ASSERT_TRUE(removal.open(QIODevice::WriteOnly));
    EXPECT_TRUE(comm.openPort()) << "that of a dead process is taken over: " << qPrintable(comm.errorText());
    removal.remove();
}

TEST_F(SerialControl, RefusesAPortThatIsInUse)
{
    MSComm other(ports);
    ASSERT_TRUE(other.openPort());
    const QString reason = failure(1);
    EXPECT_TRUE(reason.contains(QStringLiteral("in use by process %1").arg(getpid()))) << qPrintable(reason);
    EXPECT_TRUE(reason.contains(PortLock::of(line.device()).file)) << qPrintable(reason);
    QTemporaryDir dir;
    const QString otherName = dir.filePath(QStringLiteral("controller"));
    ASSERT_TRUE(QFile::link(line.device(), otherName));
    ports.assign(4, otherName);
    const QString sameReason = failure(4);
    EXPECT_TRUE(sameReason.contains(QStringLiteral("COM4 (%1)").arg(otherName))) << qPrintable(sameReason);
    EXPECT_TRUE(sameReason.contains(QStringLiteral("in use"))) << qPrintable(sameReason);
    other.closePort();
    EXPECT_TRUE(comm.openPort());
}

TEST_F(SerialControl, TellsBytesFromTheThresholdOn)
{
    comm.setRThreshold(3);
    ASSERT_TRUE(comm.openPort());
    line.send("ab");
    QCoreApplication::processEvents();
    EXPECT_EQ(events.size(), 0);
    line.send("c");
    ASSERT_TRUE(events.wait());
    EXPECT_EQ(comm.Event(), CommEvent::Receive);
    EXPECT_EQ(comm.Input(), "abc");
    EXPECT_EQ(comm.Input(), kNothing);
}

TEST_F(SerialControl, ClosesAndTellsWhenTheAdapterGoes)
{
    ASSERT_TRUE(comm.openPort());
    line.unplug();
    ASSERT_TRUE(events.wait());
    EXPECT_EQ(comm.Event(), CommEvent::DCB);
    EXPECT_FALSE(comm.PortOpen());
    EXPECT_FALSE(comm.Output("x"));
    EXPECT_TRUE(comm.errorText().contains(QStringLiteral("was lost"))) << qPrintable(comm.errorText());
}

} // namespace
