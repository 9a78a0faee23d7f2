#include "TelnetLine.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace platform {

namespace {

const QString kNoOption = QStringLiteral(
    "the serial server does not answer the COM port option (RFC 2217) in time; switch it on there, or use tcp://");

}

TelnetLine::TelnetLine(const ServerAddress& address, int timeoutMs, QObject* parent)
    : LineDevice(parent), m_tcp(address, timeoutMs), m_timeoutMs(timeoutMs)
{
    m_limit.setSingleShot(true);
    connect(&m_tcp, &TcpLine::readyRead, this, &TelnetLine::onReadyRead);
    connect(&m_tcp, &TcpLine::lost, this, &TelnetLine::onLost);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        m_error.reason = kNoOption;
        m_negotiating.finish();
    });
}

bool TelnetLine::open(const LineSettings& settings)
{
    const QDeadlineTimer deadline(m_timeoutMs);
    m_settings = settings;
    m_error = {};
    if (!m_tcp.connectUntil(deadline)) {
        m_error = m_tcp.error();
        return false;
    }
    m_isOpen = negotiate(deadline);
    m_bytes.clear();
    if (!m_isOpen)
        m_tcp.close();
    return m_isOpen;
}

bool TelnetLine::negotiate(QDeadlineTimer deadline)
{
    m_negotiating.arm();
    m_option.start(m_settings);
    sendOutput();
    m_limit.start(static_cast<int>(std::max<qint64>(deadline.remainingTime(), 0)));
    m_negotiating.run();
    m_limit.stop();
    if (m_error.reason.isEmpty())
        m_error.reason = m_option.reason();
    return m_error.reason.isEmpty() && m_tcp.isOpen();
}

void TelnetLine::close()
{
    m_isOpen = false;
    m_tcp.close();
    if (m_negotiating.isRunning() && m_error.reason.isEmpty())
        m_error.reason = QStringLiteral("It was cancelled.");
    m_negotiating.finish();
}

bool TelnetLine::setFormat(const LineSettings& settings)
{
    m_settings = settings;
    m_option.set(m_settings);
    sendOutput();
    return true;
}

void TelnetLine::setDtr(bool on)
{
    m_settings.dtr = on;
    setFormat(LineSettings(m_settings));
}

void TelnetLine::setRts(bool on)
{
    m_settings.rts = on;
    setFormat(LineSettings(m_settings));
}

void TelnetLine::setReadBufferSize(int bytes)
{
    m_bufferSize = bytes;
    m_tcp.setReadBufferSize(bytes);
}

// What waited for room comes now.
QByteArray TelnetLine::readAll()
{
    QByteArray bytes = std::exchange(m_bytes, {});
    if (m_tcp.bytesAvailable() > 0)
        QMetaObject::invokeMethod(this, &TelnetLine::onReadyRead, Qt::QueuedConnection);
    return bytes;
}

bool TelnetLine::write(const QByteArray& bytes)
{
    return m_isOpen && m_tcp.write(ComPortOption::escape(bytes));
}

void TelnetLine::discardInput()
{
    m_bytes.clear();
    for (int i = 0; i < kMaxFlushes && (m_tcp.takeIn() || m_tcp.bytesAvailable() > 0); ++i) {
        decode();
        m_bytes.clear();
    }
}

void TelnetLine::discardOutput()
{
    m_tcp.discardOutput();
    if (!m_isOpen)
        return;
    m_option.purge();
    sendOutput();
}

void TelnetLine::sendOutput()
{
    const QByteArray output = m_option.takeOutput();
    std::ignore = output.isEmpty() || m_tcp.write(output); // a line that takes nothing is lost, and says so itself
}

void TelnetLine::decode()
{
    if (m_bytes.size() < m_bufferSize)
        m_bytes += m_option.receive(m_tcp.readAll());
    sendOutput();
}

void TelnetLine::onReadyRead()
{
    decode();
    if (m_negotiating.isRunning()) {
        m_bytes.clear();
        if (m_option.state() != ComPortOption::State::Negotiating)
            m_negotiating.finish();
        return;
    }
    if (m_isOpen && m_option.state() == ComPortOption::State::Failed) {
        m_error = {{}, m_option.reason(), {}, {}};
        m_isOpen = false;
        m_tcp.close();
        Q_EMIT lost();
    } else if (m_isOpen && !m_bytes.isEmpty()) {
        Q_EMIT readyRead();
    }
}

void TelnetLine::onLost()
{
    if (m_error.reason.isEmpty())
        m_error = m_tcp.error();
    m_negotiating.finish();
    if (std::exchange(m_isOpen, false))
        Q_EMIT lost();
}

} // namespace platform
