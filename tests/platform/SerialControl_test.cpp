#include "ChildProcess.h"
#include "ComPorts.h"
#include "MSComm.h"
#include "PortLock.h"
#include "ScriptedController.h"
#include "Table.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
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

TEST(PortSource, GivesDeviceOfCom)
{
    const QVector<ComPort> machine = {{"/dev/ttyS0", ""}, {"/dev/ttyUSB10", "ten"}, {"/dev/ttyUSB2", "two"}};
    for (QStringList row : tableRows("platform/com_ports.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        row.replaceInStrings(QRegularExpression("^-$"), "");
        QProcessEnvironment environment;
        if (!row[2].isEmpty())
            environment.insert("VORLANT_COM1", row[2]);
        const auto setting = [&](const QString& key) { return key == u"COM1" ? row[3] : QString(); };
        ComPorts ports(environment, setting, [&] { return machine; });
        if (!row[4].isEmpty())
            ports.assign(1, row[4]);
        const ComPort port = ports.resolve(row[1].toInt());
        EXPECT_EQ(port.device, row[5]);
        EXPECT_EQ(port.description, row[6]);
    }
}

// Number, "-" for what is not plugged in, device and lasting name, these by their last letter.
QString numbering(const ComPorts& ports)
{
    QStringList texts;
    for (const ComPort& port : ports.all())
        texts << QString::number(port.number) + (port.isPluggedIn ? u' ' : u'-') + port.device.back() +
                     port.lastingName.right(1);
    return texts.join(u'|');
}

TEST(PortSource, AnAdapterKeepsItsNumber)
{
    QTemporaryDir folder;
    const QString byId = folder.filePath("by-id/");
    ASSERT_TRUE(QDir().mkdir(byId));
    // What is plugged in, where the links a and b lead to, what COM1 is in the settings ("@": a link); the numbers.
    const char* const rows[][4] = {{"01", "01", "", "1 0a|2 1b"},
                                   {"01", "01", "@b", "1 1b|2 0a"},
                                   {"01", "10", "@b", "1 0b|2 1a"},
                                   {"0", "0 ", "@b", "1-bb|2 0a"},
                                   {"1", " 1", "@b", "1 1b"},
                                   {"", "  ", "@b", "1-bb"},
                                   {"01", "01", "#0", "1 0a|2 1b"},
                                   {"1", " 1", "#9", "1-9|2 1b"},
                                   {"012", "02", "@b", "1 2b|2 0a|3 1"},
                                   {"01", "01", "tcp://a:7", "1 7|2 0a|3 1b"}};
    for (const auto& [plugged, links, setting, numbers] : rows) {
        SCOPED_TRACE(std::string(plugged) + links + setting);
        QVector<ComPort> machine;
        for (const QChar device : QString(plugged)) {
            machine.append({folder.filePath(device)});
            QFile(machine.last().device).open(QIODevice::WriteOnly);
        }
        for (int i = 0; i < 2; ++i) {
            QFile::remove(byId + QChar("ab"[i]));
            EXPECT_TRUE(links[i] == ' ' || QFile::link(folder.filePath(QChar(links[i])), byId + QChar("ab"[i])));
        }
        const QString named = QString(setting).replace('@', byId).replace('#', folder.path() + '/');
        const auto lookup = [&](const QString& key) { return key == "COM1" ? named : QString(); };
        const ComPorts ports(
            QProcessEnvironment(), lookup, [&] { return machine; }, folder.filePath("by-id"));
        EXPECT_EQ(numbering(ports), numbers);
        EXPECT_EQ(ports.device(1), ports.resolve(1).device);
    }
}

TEST(Settings, AreTakenOrLeft)
{
    const ComPorts ports{QProcessEnvironment()};
    MSComm comm(ports);
    for (const char* text : {"19200,E,7,2", " 1200 , n , 8 , 1 "}) {
        EXPECT_TRUE(comm.setSettings(text)) << text;
        EXPECT_EQ(comm.Settings(), text);
    }
    for (const char* text : {"9600,N,8", "fast,N,8,1", "9600,X,8,1", "9600,N,9,1", ""}) {
        EXPECT_FALSE(comm.setSettings(text)) << text;
        EXPECT_EQ(comm.Settings(), u" 1200 , n , 8 , 1 ");
    }
}

class SerialControl : public ::testing::Test
{
protected:
    SerialControl()
    {
        ports.assign(1, line.device());
        ports.assign(2, "/dev/no-such-adapter");
        ports.assign(3, "/dev/null");
    }

    // Words of why the port cannot be opened.
    void expectFailure(int number, const QStringList& words)
    {
        comm.setCommPort(number);
        EXPECT_FALSE(comm.openPort() || comm.PortOpen());
        for (const QString& word : words)
            EXPECT_TRUE(comm.errorText().contains(word)) << qPrintable(comm.errorText());
    }

    ScriptedController line{[](const QByteArray&) { return QByteArray(); }};
    ComPorts ports{QProcessEnvironment()};
    MSComm comm{ports};
    QSignalSpy events{&comm, &MSComm::OnComm};
    QString lock = PortLock::of(line.device()).file;
};

TEST_F(SerialControl, TellsWhyAPortCannotBeOpened)
{
    expectFailure(2, {"COM2 (/dev/no-such-adapter)", "plug the adapter in"});
    expectFailure(3, {"COM3 (/dev/null)"});
    expectFailure(98, {"no such port"});
    comm.setCommPort(1);
    EXPECT_TRUE(comm.openPort()) << qPrintable(comm.errorText());
    EXPECT_TRUE(comm.errorText().isEmpty());
}

TEST_F(SerialControl, LockFilesOfNobody)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(lock).constData(), 0600), 0);
    expectFailure(1, {lock + " is in the way"});
    ASSERT_TRUE(QFile::remove(lock));
    QFile file(lock);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("99999999\nvorlant\n") > 0);
    file.close();
    EXPECT_TRUE(geteuid() != 0 || trueAsOtherUser([this] {
                    expectFailure(1, {"left by process 99999999"}); // the sticky bit keeps what another user left
                    return !HasFailure();
                }));
    QFile removal(lock + ".rmlock"); // of one that was killed while it took a lock over
    ASSERT_TRUE(removal.open(QIODevice::WriteOnly));
    EXPECT_TRUE(comm.openPort()) << "that of a dead process is taken over: " << qPrintable(comm.errorText());
    removal.remove();
}

TEST_F(SerialControl, RefusesAPortThatIsInUse)
{
    MSComm other(ports);
    ASSERT_TRUE(other.openPort());
    expectFailure(1, {QString("in use by process %1").arg(getpid()), lock});
    QTemporaryDir dir;
    const QString otherName = dir.filePath("controller");
    ASSERT_TRUE(QFile::link(line.device(), otherName));
    ports.assign(4, otherName);
    expectFailure(4, {"COM4 (" + otherName + ')', "in use"});
    other.closePort();
    EXPECT_TRUE(comm.openPort());
}

TEST_F(SerialControl, TellsBytesFromTheThresholdOnAndWhenTheAdapterGoes)
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
    EXPECT_EQ(comm.Input(), "");
    line.unplug();
    ASSERT_TRUE(events.wait());
    EXPECT_EQ(comm.Event(), CommEvent::DCB);
    EXPECT_FALSE(comm.PortOpen());
    EXPECT_FALSE(comm.Output("x"));
    EXPECT_TRUE(comm.errorText().contains("was lost")) << qPrintable(comm.errorText());
}

} // namespace
