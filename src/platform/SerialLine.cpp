#include "SerialLine.h"

#include "ComPorts.h"
#include "PortLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace platform {

namespace {

// False for a plain file, a folder or another kind of device that exists.
bool isTerminal(const QString& device)
{
    const int fd = ::open(QFile::encodeName(device).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno != EISDIR && errno != ENXIO;
    const bool answer = isatty(fd) != 0;
    ::close(fd);
    return answer;
}

bool isPseudoTerminal(const QString& device)
{
    return QFileInfo(device).canonicalFilePath().startsWith(QStringLiteral("/dev/pts/"));
}

QString reasonOf(QSerialPort::SerialPortError error, const QString& device)
{
    if (!isTerminal(device))
        return QStringLiteral("it is not a working serial port; choose another one");
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        return QStringLiteral("there is no such device; plug the adapter in or choose another port");
    case QSerialPort::PermissionError:
        if (QFileInfo(device).isReadable() && QFileInfo(device).isWritable())
            return QStringLiteral("it is in use by another program; close that program");
        return QStringLiteral("permission denied; add your user to the group \"dialout\" and log in again");
    case QSerialPort::OpenError:
        return QStringLiteral("it is open already");
    case QSerialPort::UnsupportedOperationError:
        return QStringLiteral("it does not accept these settings");
    default:
        return QStringLiteral("it is not a working serial port");
    }
}

PortError lockError(const PortLock& lock)
{
    if (lock.process.isEmpty())
        return {{},
                QStringLiteral("the lock file %1 is in the way and names no process; have the administrator remove it"),
                lock.file,
                {}};
    if (lock.state == PortLock::State::Held)
        return {{},
                QStringLiteral("it is in use by process %2, which holds the lock file %1; close that program"),
                lock.file,
                lock.process};
    return {{},
            QStringLiteral("the lock file %1 was left by process %2, which has ended, and you may not remove it; "
                           "have the administrator remove it"),
            lock.file,
            lock.process};
}

// The port does software or hardware handshaking, not both.
QSerialPort::FlowControl flowOf(Handshake handshake)
{
    return handshake == Handshake::Hardware   ? QSerialPort::HardwareControl
           : handshake == Handshake::Software ? QSerialPort::SoftwareControl
                                              : QSerialPort::NoFlowControl;
}

} // namespace

SerialLine::SerialLine(QString device, QObject* parent) : LineDevice(parent), m_device(std::move(device))
{
    connect(&m_port, &QSerialPort::readyRead, this, &SerialLine::readyRead);
    connect(&m_port, &QSerialPort::errorOccurred, this, &SerialLine::onError);
}

SerialLine::~SerialLine()
{
    m_port.disconnect(this);
    m_port.close();
}

void SerialLine::close()
{
    if (m_port.isOpen())
        m_port.close();
}

// Opening begins with a lock file that is flushed to the disk: not for an adapter that is not there. The lock keeps
// other programs off by the name of the device.
bool SerialLine::open(const LineSettings& settings)
{
    m_error = {};
    const QString name = ComPorts::realName(m_device);
    if (name.isEmpty()) {
        m_error.reason = reasonOf(QSerialPort::DeviceNotFoundError, m_device);
        return false;
    }
    const PortLock found = PortLock::of(name);
    if (found.state == PortLock::State::Abandoned)
        found.removeAbandoned();
    if (found.state == PortLock::State::NoLock) {
        m_error = lockError(found);
        return false;
    }
    return openLocked(name, settings);
}

bool SerialLine::openLocked(const QString& name, const LineSettings& settings)
{
    m_port.setPortName(name);
    const bool opened = m_port.open(QIODevice::ReadWrite);
    if (opened && setFormat(settings)) {
        m_port.clear();
        return true;
    }
    const bool isRefused = m_port.error() == QSerialPort::PermissionError;
    m_error = {{}, reasonOf(m_port.error(), m_device), {}, {}};
    m_port.close();
    if (const PortLock lock = PortLock::of(name); isRefused && lock.state != PortLock::State::None)
        m_error = lockError(lock);
    return false;
}

bool SerialLine::setFormat(const LineSettings& settings)
{
    // A pseudo-terminal has no wire: it refuses formats and control lines and works all the same.
    const bool wireless = isPseudoTerminal(m_device);
    const LineFormat& format = settings.format;
    const bool applied = m_port.setBaudRate(settings.speed) && (m_port.setDataBits(format.dataBits) || wireless) &&
                         (m_port.setParity(format.parity) || wireless) &&
                         (m_port.setStopBits(format.stopBits) || wireless) &&
                         (m_port.setFlowControl(flowOf(settings.handshake)) || wireless);
    m_port.setDataTerminalReady(settings.dtr);
    if (settings.handshake != Handshake::Hardware)
        m_port.setRequestToSend(settings.rts);
    m_port.clearError();
    return applied;
}

// The kernel hands the bytes up in pieces: it is empty when nothing more is ready behind a flush.
void SerialLine::discardInput()
{
    m_port.readAll();
    for (int i = 0; m_port.isOpen() && i < kMaxFlushes && isReady(m_port.handle(), POLLIN); ++i)
        m_port.clear(QSerialPort::Input);
}

bool SerialLine::write(const QByteArray& bytes)
{
    if (m_port.write(bytes) != bytes.size())
        return false;
    // While the line takes nothing (the far end holds it, say) the bytes wait: a write now would fail as if the adapter
    // had gone.
    if (isReady(m_port.handle(), POLLOUT))
        m_port.flush();
    return m_port.isOpen();
}

void SerialLine::onError(QSerialPort::SerialPortError error)
{
    const bool isLost =
        error == QSerialPort::ResourceError || error == QSerialPort::ReadError || error == QSerialPort::WriteError;
    if (!isLost || !m_port.isOpen())
        return;
    m_error = {{}, QStringLiteral("check cable and adapter"), {}, {}};
    m_port.close();
    Q_EMIT lost();
}

} // namespace platform
