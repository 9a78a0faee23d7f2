#pragma once

#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <stdexcept>
#include <tuple>

// The serial server of the manual's example, in a process of its own on the loopback interface, with a device of the
// test in place of that of the page. It listens when the object is there, and ends with it.
class SerialServer
{
public:
    explicit SerialServer(const QString& device) : SerialServer(example("Vorlant"), device) {}

    // configuration: with the example's device and ports, 4001 for plain bytes and 4002 for RFC 2217.
    SerialServer(const QString& configuration, const QString& device)
    {
        for (int attempt = 0; attempt < 5; ++attempt) { // another program may have got a port in between
            m_tcpPort = freePort();
            m_telnetPort = freePort();
            QString text = configuration;
            text.replace("/dev/ttyUSB0", device);
            text.replace(",4001", QString(",127.0.0.1,%1").arg(m_tcpPort));
            text.replace(",4002", QString(",127.0.0.1,%1").arg(m_telnetPort));
            start("ser2net", {"-n", "-u", "-c", stored(text), "-P", m_dir.filePath("pid")});
            if (isListening(m_tcpPort) && isListening(m_telnetPort))
                return;
        }
        throw std::runtime_error("ser2net does not listen");
    }
    ~SerialServer() { kill(); }
    SerialServer(const SerialServer&) = delete;
    SerialServer& operator=(const SerialServer&) = delete;

    QString tcp() const { return QString("tcp://127.0.0.1:%1").arg(m_tcpPort); }
    QString telnet() const { return QString("rfc2217://127.0.0.1:%1").arg(m_telnetPort); }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    // What the page of an edition of the manual shows.
    static QString example(const char* edition)
    {
        QFile page(QString(VORLANT_HELP_DIR "/%1/connecting.html").arg(edition));
        static const QRegularExpression form("<pre class=\"file\" title=\"ser2net.yaml\">(.*?)</pre>",
                                             QRegularExpression::DotMatchesEverythingOption);
        const QString text = page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
        return form.match(text).captured(1).replace("&amp;", "&");
    }

    static bool isInstalled() { return !path("ser2net").isEmpty(); }

    static quint16 freePort()
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost);
        return probe.serverPort();
    }

    // As the kernel lists it: a connection made to see it would be one for the server.
    static bool isListening(quint16 port)
    {
        const QByteArray local = ":" + QByteArray::number(port, 16).rightJustified(4, '0').toUpper() + " ";
        return QTest::qWaitFor([&] {
            QFile table("/proc/net/tcp");
            std::ignore = table.open(QIODevice::ReadOnly);
            for (const QByteArray& line : table.readAll().split('\n')) {
                if (line.contains(local + "00000000:0000 0A"))
                    return true;
            }
            return false;
        });
    }

private:
    static QString path(const QString& program)
    {
        return QStandardPaths::findExecutable(program, {"/usr/sbin", "/usr/bin"});
    }

    QString stored(const QString& text)
    {
        QFile file(m_dir.filePath("ser2net.yaml"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 1)
            throw std::runtime_error("no configuration");
        return file.fileName();
    }

    void start(const QString& program, const QStringList& arguments)
    {
        kill();
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(path(program), arguments);
        if (!m_process.waitForStarted())
            throw std::runtime_error("ser2net is not installed");
    }

    QTemporaryDir m_dir;
    QProcess m_process;
    quint16 m_tcpPort = 0;
    quint16 m_telnetPort = 0;
};
