#include "SimulatorLine.h"

#include "FrameLength.h"
#include "LineFormat.h"

#include <QFile>
#include <QSerialPortInfo>

#include <algorithm>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <pty.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int kGapMs = 100; // a request whose bytes stay away this long is given up
constexpr qsizetype kMaxRequest = 600;

termios rawLine()
{
    termios raw{};
    cfmakeraw(&raw);
    raw.c_cflag |= CLOCAL | CREAD;
    cfsetspeed(&raw, B9600);
    return raw;
}

// The control flags of a format; empty for what no controller has: the parity is N, E or O, with 7 or 8 data bits and
// 1 or 2 stop bits.
std::optional<tcflag_t> flagsOf(const QString& chara)
{
    const auto format = platform::parseLineFormat(chara);
    if (!format || format->dataBits < QSerialPort::Data7 || format->parity > QSerialPort::OddParity ||
        format->stopBits == QSerialPort::OneAndHalfStop)
        return {};
    tcflag_t flags = format->dataBits == QSerialPort::Data7 ? CS7 : CS8;
    if (format->parity != QSerialPort::NoParity)
        flags |= PARENB;
    if (format->parity == QSerialPort::OddParity)
        flags |= PARODD;
    return format->stopBits == QSerialPort::TwoStop ? flags | CSTOPB : flags;
}

// Sets speed and format. QSerialPort would refuse the format on a pseudo-terminal, and takes no descriptor that is
// open already, such as the near end of openpty.
bool setLine(termios& line, int speed, const QString& chara, QString& errorText)
{
    // cfsetspeed takes a speed as its number or as the system's code for it: a code is no speed.
    if (!QSerialPortInfo::standardBaudRates().contains(speed) || cfsetspeed(&line, static_cast<speed_t>(speed)) != 0) {
        errorText = QStringLiteral("the speed %1 is not one of the usual ones, such as 9600 or 19200").arg(speed);
        return false;
    }
    const auto flags = flagsOf(chara);
    if (!flags) {
        errorText = QStringLiteral("the format \"%1\" is not of the form N,8,1").arg(chara);
        return false;
    }
    line.c_cflag = (line.c_cflag & ~static_cast<tcflag_t>(CSIZE | PARENB | PARODD | CSTOPB)) | *flags;
    return true;
}

} // namespace

SimulatorLine::SimulatorLine(SimulatedController& controller, Faults faults, int paceBaud, platform::Clock& clock,
                             QObject* parent)
    : QObject(parent), m_controller(controller), m_faults(std::move(faults)), m_gap(clock.makeTimer()),
      m_wire(clock, paceBaud)
{
    connect(m_gap.get(), &platform::Timer::timeout, this, [this] {
        m_gap->stop();
        m_buffer.clear();
    });
    connect(&m_wire, &ReplyWire::passed, this, &SimulatorLine::send);
}

SimulatorLine::~SimulatorLine()
{
    m_notifier.reset();
    m_clientGone.reset();
    for (const int fd : {m_fd, m_clientEnd, m_watch}) {
        if (fd >= 0)
            close(fd);
    }
}

bool SimulatorLine::openTerminal()
{
    char name[128] = {};
    const termios raw = rawLine();
    if (openpty(&m_fd, &m_clientEnd, name, &raw, nullptr) != 0) {
        m_errorText = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    m_path = QString::fromLocal8Bit(name);
    watchClients();
    return startServing();
}

void SimulatorLine::watchClients()
{
    m_watch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (m_watch < 0 || inotify_add_watch(m_watch, QFile::encodeName(m_path).constData(), IN_CLOSE) < 0)
        return;
    m_clientGone = std::make_unique<QSocketNotifier>(m_watch, QSocketNotifier::Read);
    connect(m_clientGone.get(), &QSocketNotifier::activated, this, &SimulatorLine::onClientGone);
}

// A client has the terminal for itself. One that is killed cannot give that up, and the terminal stays open here: the
// next client would be kept off.
void SimulatorLine::onClientGone()
{
    char events[1024];
    while (read(m_watch, events, sizeof events) > 0) {
    }
    ioctl(m_clientEnd, TIOCNXCL);
}

bool SimulatorLine::openDevice(const QString& device, int speed, const QString& chara)
{
    termios raw = rawLine();
    if (!setLine(raw, speed, chara, m_errorText))
        return false;
    m_fd = open(QFile::encodeName(device).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_fd < 0 || tcsetattr(m_fd, TCSANOW, &raw) != 0) {
        m_errorText = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    m_path = device;
    return startServing();
}

bool SimulatorLine::startServing()
{
    fcntl(m_fd, F_SETFL, fcntl(m_fd, F_GETFL) | O_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_fd, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SimulatorLine::onReadable);
    return true;
}

void SimulatorLine::onReadable()
{
    char bytes[1024];
    const ssize_t count = read(m_fd, bytes, sizeof bytes);
    if (count <= 0) {
        if (count == 0 || (errno != EAGAIN && errno != EINTR))
            m_notifier->setEnabled(false);
        return;
    }
    m_buffer.append(bytes, static_cast<qsizetype>(count));
    m_gap->start(kGapMs);
    serveBuffer();
}

void SimulatorLine::serveBuffer()
{
    for (int length = requestLength(); length > 0 && m_buffer.size() >= length; length = requestLength()) {
        const QByteArray request = m_buffer.left(length);
        m_buffer.remove(0, length);
        handle(request);
    }
    if (m_buffer.size() > kMaxRequest)
        m_buffer.clear();
}

int SimulatorLine::requestLength() const
{
    if (m_controller.isAscii())
        return static_cast<int>(m_buffer.indexOf('\n') + 1);
    return static_cast<int>(framelength::ofRtuRequest(m_buffer));
}

void SimulatorLine::handle(const QByteArray& request)
{
    Q_EMIT traced(QStringLiteral("S:"), request);
    const Faults::Verdict verdict = m_faults.next();
    if (verdict.reset) {
        m_controller.restart();
        return;
    }
    const bool ascii = m_controller.isAscii();
    const QByteArray frame = ascii ? request.mid(std::max<qsizetype>(request.lastIndexOf(':'), 0)) : request;
    const QByteArray reply = m_faults.damaged(m_controller.answer(frame, verdict.exception), verdict, ascii);
    m_wire.put(reply, request.size(), verdict.delayMs);
}

void SimulatorLine::send(const QByteArray& bytes)
{
    Q_EMIT traced(QStringLiteral("R:"), bytes);
    if (write(m_fd, bytes.constData(), static_cast<size_t>(bytes.size())) < 0)
        m_errorText = QString::fromLocal8Bit(std::strerror(errno));
}
