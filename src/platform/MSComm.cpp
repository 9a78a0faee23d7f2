#include "MSComm.h"

#include "LineFormat.h"
#include "Numbers.h"
#include "SerialLine.h"
#include "ServerAddress.h"
#include "TelnetLine.h"

#include <algorithm>
#include <optional>

namespace platform {

namespace {

const QString kNotOpened = QStringLiteral("COM%1 (%2) cannot be opened");
const QString kLost = QStringLiteral("COM%1 (%2) was lost");

std::optional<LineSettings> parseSettings(const QString& text)
{
    const auto speed = parseInt32(text.section(u',', 0, 0).trimmed());
    const auto format = parseLineFormat(text.section(u',', 1));
    if (!speed || *speed <= 0 || !format)
        return {};
    LineSettings settings;
    settings.speed = *speed;
    settings.format = *format;
    return settings;
}

std::unique_ptr<LineDevice> lineFor(const QString& device, int connectTimeoutMs)
{
    if (!ServerAddress::isMeant(device))
        return std::make_unique<SerialLine>(device);
    const Result<ServerAddress> address = ServerAddress::parse(device);
    if (!address.ok())
        return nullptr;
    if (address.value().setsLine)
        return std::make_unique<TelnetLine>(address.value(), connectTimeoutMs);
    return std::make_unique<TcpLine>(address.value(), connectTimeoutMs);
}

// Hardware handshaking is the stricter one, where both are wanted.
Handshake handshakeOf(int mode)
{
    return mode >= 2 ? Handshake::Hardware : mode == 1 ? Handshake::Software : Handshake::None;
}

} // namespace

MSComm::MSComm(const ComPorts& ports, QObject* parent, int connectTimeoutMs)
    : QObject(parent), m_ports(ports), m_connectTimeoutMs(connectTimeoutMs)
{}

MSComm::~MSComm()
{
    if (m_line)
        m_line->disconnect(this);
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
    return !PortOpen() || applySettings();
}

void MSComm::setInBufferSize(int bytes)
{
    if (bytes >= 1)
        m_inBufferSize = bytes;
    if (m_line)
        m_line->setReadBufferSize(m_inBufferSize);
}

void MSComm::setDTREnable(bool on)
{
    m_dtr = on;
    if (PortOpen())
        m_line->setDtr(on);
}

void MSComm::setRTSEnable(bool on)
{
    m_rts = on;
    if (PortOpen())
        m_line->setRts(on);
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
    if (PortOpen())
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

QString MSComm::portDevice() const
{
    return m_portName.isEmpty() ? m_ports.device(m_commPort) : m_portName;
}

bool MSComm::isServer() const
{
    return ServerAddress::parse(portDevice()).ok();
}

bool MSComm::PortOpen() const
{
    return m_line && m_line->isOpen();
}

void MSComm::closePort()
{
    if (m_line)
        m_line->close();
}

bool MSComm::openPort()
{
    if (m_isOpening)
        return false;
    m_device = portDevice();
    m_error = {};
    if (m_device.isEmpty())
        return refuse(
            {{}, QStringLiteral("there is no such port; plug the adapter in or choose another port"), {}, {}});
    if (!makeLine())
        return refuse({{}, ServerAddress::parse(m_device).error(), {}, {}});
    m_isOpening = true;
    const bool opened = m_line->open(lineSettings());
    m_isOpening = false;
    return opened || refuse(m_line->error());
}

bool MSComm::refuse(const PortError& error)
{
    m_error = error;
    m_error.pattern = kNotOpened;
    return false;
}

// The line before may be the one that just said that it was lost: it ends when that has been dealt with.
bool MSComm::makeLine()
{
    if (m_line) {
        m_line->disconnect(this);
        m_line->close();
        m_line.release()->deleteLater();
    }
    m_line = lineFor(m_device, m_connectTimeoutMs);
    if (!m_line)
        return false;
    m_line->setReadBufferSize(m_inBufferSize);
    connect(m_line.get(), &LineDevice::readyRead, this, &MSComm::onReadyRead);
    connect(m_line.get(), &LineDevice::lost, this, &MSComm::onLost);
    return true;
}

LineSettings MSComm::lineSettings() const
{
    LineSettings settings = parseSettings(m_settings).value_or(LineSettings());
    settings.handshake = handshakeOf(m_handshaking);
    settings.dtr = m_dtr;
    settings.rts = m_rts;
    return settings;
}

bool MSComm::applySettings()
{
    return m_line->setFormat(lineSettings());
}

QString MSComm::errorText() const
{
    if (m_error.pattern.isEmpty())
        return {};
    return m_error.pattern.arg(m_commPort).arg(m_device) + QStringLiteral(": ") + m_error.inWords(m_error.reason);
}

QByteArray MSComm::Input()
{
    QByteArray bytes = PortOpen() ? m_line->readAll() : QByteArray();
    if (m_nullDiscard)
        bytes.replace('\0', "");
    return bytes;
}

void MSComm::discardInput()
{
    if (PortOpen())
        m_line->discardInput();
}

void MSComm::discardOutput()
{
    if (PortOpen())
        m_line->discardOutput();
}

bool MSComm::Output(const QByteArray& bytes)
{
    return PortOpen() && m_line->write(bytes);
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
    if (m_rThreshold > 0 && m_line->bytesAvailable() >= std::min(m_rThreshold, m_inBufferSize))
        raise(CommEvent::Receive);
}

void MSComm::onLost()
{
    m_error = m_line->error();
    m_error.pattern = kLost;
    raise(CommEvent::DCB);
}

} // namespace platform
