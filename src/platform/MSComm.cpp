#include "MSComm.h"

#include "LineFormat.h"
#include "Numbers.h"
#include "PortLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kMaxFlushes = 100; // a line that never falls silent is no reason to wait
const QString kNotOpened = QStringLiteral("COM%1 (%2) cannot be opened");
const QString kLost = QStringLiteral("COM%1 (%2) was lost");

struct LineSettings
{
    qint32 speed = 0;
    LineFormat format;
};

std::optional<LineSettings> parseSettings(const QString& text)
{
    const auto speed = parseInt32(text.section(u',', 0, 0).trimmed());
    const auto format = parseLineFormat(text.section(u',', 1));
    if (!speed || *speed <= 0 || !format)
        return {};
    return LineSettings{*speed, *format};
}

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

// The one name of a device that may have several: the lock that keeps other programs off goes by the name.
QString realName(const QString& device)
{
    return QFileInfo(QDir(QStringLiteral("/dev")).absoluteFilePath(device)).canonicalFilePath();
}

// Whether one of the events has come, or the device has gone.
bool isReady(int fd, short events)
{
    pollfd state{fd, events, 0};
    return poll(&state, 1, 0) > 0;
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
        return QStringLiteral("you may not open it; add your user to the group \"dialout\" and log in again");
    case QSerialPort::OpenError:
        return QStringLiteral("it is open already");
    case QSerialPort::UnsupportedOperationError:
        return QStringLiteral("it does not take these settings");
    default:
        return QStringLiteral("it is not a working serial port");
    }
}

PortError lockError(const PortLock& lock)
{
    if (lock.process.isEmpty())
        return {kNotOpened,
                QStringLiteral("the lock file %1 is in the way and names no process; have the administrator remove it"),
                lock.file,
                {}};
    if (lock.state == PortLock::State::Held)
        return {kNotOpened,
                QStringLiteral("it is in use by process %2, which holds the lock file %1; close that program"),
                lock.file, lock.process};
    return {kNotOpened,
            QStringLiteral("the lock file %1 was left by process %2, which has ended, and you may not remove it; "
                           "have the administrator remove it"),
            lock.file, lock.process};
}

} // namespace

MSComm::MSComm(const ComPorts& ports, QObject* parent) : QObject(parent), m_ports(ports)
{
    connect(&m_port, &QSerialPort::readyRead, this, &MSComm::onReadyRead);
    connect(&m_port, &QSerialPort::errorOccurred, this, &MSComm::onError);
}

MSComm::~MSComm()
{
    m_port.disconnect(this);
    m_port.close();
}

int MSComm::CommPort() const
{
    return m_commPort;
}

void MSComm::setCommPort(int number)
{
    if (number >= 1 && number <= kMaxComNumber)
        m_commPort = number;
}

QString MSComm::Settings() const
{
    return m_settings;
}

bool MSComm::setSettings(const QString& settings)
{
    if (!parseSettings(settings))
        return false;
    m_settings = settings;
    return !m_port.isOpen() || applySettings();
}

void MSComm::setInBufferSize(int bytes)
{
    if (bytes >= 1)
        m_inBufferSize = bytes;
    m_port.setReadBufferSize(m_inBufferSize);
}

void MSComm::setDTREnable(bool on)
{
    m_dtr = on;
    if (m_port.isOpen())
        m_port.setDataTerminalReady(on);
}

void MSComm::setRTSEnable(bool on)
{
    m_rts = on;
    if (m_port.isOpen())
        m_port.setRequestToSend(on);
}

void MSComm::setNullDiscard(bool on)
{
    m_nullDiscard = on;
}

void MSComm::setHandshaking(int mode)
{
    if (mode < 0 || mode > 3)
        return;
    m_handshaking = mode;
    if (m_port.isOpen())
        applySettings();
}

void MSComm::setInputMode(int mode)
{
    m_inputMode = mode;
}

void MSComm::setRThreshold(int bytes)
{
    m_rThreshold = std::clamp(bytes, 0, 32767);
}

bool MSComm::PortOpen() const
{
    return m_port.isOpen();
}

void MSComm::closePort()
{
    if (m_port.isOpen())
        m_port.close();
}

bool MSComm::openPort()
{
    const QString device = m_ports.device(m_commPort);
    if (device.isEmpty()) {
        m_device.clear();
        m_error = {
            kNotOpened, QStringLiteral("there is no such port; plug the adapter in or choose another port"), {}, {}};
        return false;
    }
    m_device = device;
    m_error = {};
    const QString name = realName(device);
    m_port.setPortName(name);
    // Opening begins with a lock file that is flushed to the disk: not for an adapter that is not there.
    if (name.isEmpty()) {
        m_error = {kNotOpened, reasonOf(QSerialPort::DeviceNotFoundError, device), {}, {}};
        return false;
    }
    const PortLock found = PortLock::of(name);
    if (found.state == PortLock::State::Abandoned)
        found.removeAbandoned();
    if (found.state == PortLock::State::NoLock) {
        m_error = lockError(found);
        return false;
    }
    const bool opened = m_port.open(QIODevice::ReadWrite);
    if (opened && applySettings()) {
        m_port.clear();
        return true;
    }
    const bool isRefused = m_port.error() == QSerialPort::PermissionError;
    m_error = {kNotOpened, reasonOf(m_port.error(), device), {}, {}};
    m_port.close();
    if (const PortLock lock = PortLock::of(name); isRefused && lock.state != PortLock::State::None)
        m_error = lockError(lock);
    return false;
}

bool MSComm::applySettings()
{
    const auto line = parseSettings(m_settings);
    if (!line)
        return false;
    // The port does software or hardware handshaking, not both; hardware is the stricter one.
    const auto flow = m_handshaking >= 2   ? QSerialPort::HardwareControl
                      : m_handshaking == 1 ? QSerialPort::SoftwareControl
                                           : QSerialPort::NoFlowControl;
    // A pseudo-terminal has no wire: it refuses formats and control lines and works all the same.
    const bool wireless = isPseudoTerminal(m_device);
    const bool applied = m_port.setBaudRate(line->speed) && (m_port.setDataBits(line->format.dataBits) || wireless) &&
                         (m_port.setParity(line->format.parity) || wireless) &&
                         (m_port.setStopBits(line->format.stopBits) || wireless) &&
                         (m_port.setFlowControl(flow) || wireless);
    m_port.setDataTerminalReady(m_dtr);
    if (flow != QSerialPort::HardwareControl)
        m_port.setRequestToSend(m_rts);
    m_port.clearError();
    return applied;
}

QString MSComm::errorText() const
{
    if (m_error.pattern.isEmpty())
        return {};
    return m_error.pattern.arg(m_commPort).arg(m_device) + QStringLiteral(": ") + m_error.inWords(m_error.reason);
}

QByteArray MSComm::Input()
{
    QByteArray bytes = m_port.isOpen() ? m_port.readAll() : QByteArray();
    if (m_nullDiscard)
        bytes.replace('\0', "");
    return bytes;
}

// The kernel hands the bytes up in pieces: it is empty when nothing more is ready behind a flush.
void MSComm::discardInput()
{
    Input();
    for (int i = 0; m_port.isOpen() && i < kMaxFlushes && isReady(m_port.handle(), POLLIN); ++i)
        m_port.clear(QSerialPort::Input);
}

void MSComm::discardOutput()
{
    if (m_port.isOpen())
        m_port.clear(QSerialPort::Output);
}

bool MSComm::Output(const QByteArray& bytes)
{
    if (!m_port.isOpen() || m_port.write(bytes) != bytes.size())
        return false;
    // While the line takes nothing (the far end holds it, say) the bytes wait: a write now would fail as if the adapter
    // had gone.
    if (isReady(m_port.handle(), POLLOUT))
        m_port.flush();
    return m_port.isOpen();
}

CommEvent MSComm::Event() const
{
    return m_event;
}

void MSComm::raise(CommEvent event)
{
    m_event = event;
    Q_EMIT OnComm();
}

void MSComm::onReadyRead()
{
    if (m_rThreshold > 0 && m_port.bytesAvailable() >= std::min(m_rThreshold, m_inBufferSize))
        raise(CommEvent::Receive);
}

void MSComm::onError(QSerialPort::SerialPortError error)
{
    const bool lost =
        error == QSerialPort::ResourceError || error == QSerialPort::ReadError || error == QSerialPort::WriteError;
    if (!lost || !m_port.isOpen())
        return;
    m_error = {kLost, QStringLiteral("check cable and adapter"), {}, {}};
    m_port.close();
    raise(CommEvent::DCB);
}

} // namespace platform
