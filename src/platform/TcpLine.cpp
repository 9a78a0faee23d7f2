#include "TcpLine.h"

#include <QNetworkProxy>

#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>

namespace platform {

namespace {

constexpr int kKeepIdleSeconds = 10;
constexpr int kKeepIntervalSeconds = 5;
constexpr int kKeepProbes = 3;

const QString kRefused =
    QStringLiteral("the serial server refuses the connection; check that it runs, and the port number");
const QString kUnreachable = QStringLiteral("the serial server cannot be reached; check network and address");
const QString kUnknownName = QStringLiteral("the name of the serial server is not known; check its spelling");
const QString kNotInTime =
    QStringLiteral("the serial server did not answer in time; check network, address and server");
const QString kClosedThere =
    QStringLiteral("the serial server closed the connection; see whether another program uses its port");
const QString kGone = QStringLiteral("the serial server does not answer any more; check network and server");
const QString kCancelled = QStringLiteral("It was cancelled.");

QString connectReason(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return kRefused;
    case QAbstractSocket::HostNotFoundError:
        return kUnknownName;
    case QAbstractSocket::SocketTimeoutError:
        return kNotInTime;
    case QAbstractSocket::RemoteHostClosedError:
        return kClosedThere;
    default:
        return kUnreachable;
    }
}

void setNumber(qintptr socket, int level, int option, int value)
{
    setsockopt(static_cast<int>(socket), level, option, &value, sizeof value);
}

} // namespace

TcpLine::TcpLine(ServerAddress address, int timeoutMs, QObject* parent)
    : LineDevice(parent), m_address(std::move(address)), m_timeoutMs(timeoutMs)
{
    m_limit.setSingleShot(true);
    m_socket.setProxy(QNetworkProxy::NoProxy);
    connect(&m_socket, &QTcpSocket::connected, this, [this] { m_connecting.finish(); });
    connect(&m_limit, &QTimer::timeout, this, [this] {
        m_error.reason = kNotInTime;
        m_connecting.finish();
    });
    connect(&m_socket, &QTcpSocket::readyRead, this, [this] {
        acknowledgeAtOnce();
        Q_EMIT readyRead();
    });
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &TcpLine::onError);
}

TcpLine::~TcpLine()
{
    m_socket.disconnect(this);
    m_socket.abort();
}

bool TcpLine::open(const LineSettings& settings)
{
    Q_UNUSED(settings);
    return connectUntil(QDeadlineTimer(m_timeoutMs));
}

bool TcpLine::connectUntil(QDeadlineTimer deadline)
{
    m_error = {};
    m_connecting.arm();
    m_isConnecting = true;
    m_limit.start(static_cast<int>(std::max<qint64>(deadline.remainingTime(), 0)));
    m_socket.connectToHost(m_address.host, m_address.port);
    m_connecting.run();
    m_limit.stop();
    m_isConnecting = false;
    m_isOpen = m_error.reason.isEmpty() && m_socket.state() == QAbstractSocket::ConnectedState;
    if (m_isOpen)
        setOptions();
    else
        m_socket.abort();
    return m_isOpen;
}

// Small frames go out at once. Without an answer to the probes, or to bytes sent, the connection counts as broken.
void TcpLine::setOptions()
{
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    const qintptr socket = m_socket.socketDescriptor();
    setNumber(socket, IPPROTO_TCP, TCP_KEEPIDLE, kKeepIdleSeconds);
    setNumber(socket, IPPROTO_TCP, TCP_KEEPINTVL, kKeepIntervalSeconds);
    setNumber(socket, IPPROTO_TCP, TCP_KEEPCNT, kKeepProbes);
    setNumber(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, (kKeepIdleSeconds + kKeepIntervalSeconds * kKeepProbes) * 1000);
}

// A server that collects small pieces (Nagle) sends the rest of a reply only when it knows that the beginning has come.
// The kernel falls back by itself.
void TcpLine::acknowledgeAtOnce()
{
    setNumber(m_socket.socketDescriptor(), IPPROTO_TCP, TCP_QUICKACK, 1);
}

void TcpLine::close()
{
    if (m_isConnecting && m_error.reason.isEmpty())
        m_error.reason = kCancelled;
    m_isOpen = false;
    m_socket.abort();
    m_connecting.finish();
}

bool TcpLine::setFormat(const LineSettings& settings)
{
    Q_UNUSED(settings);
    return true;
}

bool TcpLine::write(const QByteArray& bytes)
{
    if (m_isOpen && m_socket.bytesToWrite() + bytes.size() > kMostUnsent)
        lose(kGone);
    if (!m_isOpen || m_socket.write(bytes) != bytes.size())
        return false;
    m_socket.flush();
    acknowledgeAtOnce();
    return m_isOpen;
}

bool TcpLine::takeIn()
{
    return m_isOpen && isReady(m_socket.socketDescriptor(), POLLIN) && m_socket.waitForReadyRead(0);
}

void TcpLine::discardInput()
{
    m_socket.readAll();
    for (int i = 0; i < kMaxFlushes && takeIn(); ++i)
        m_socket.readAll();
}

void TcpLine::discardOutput()
{
    int unacknowledged = 0;
    const bool isKnown =
        m_isOpen && ioctl(static_cast<int>(m_socket.socketDescriptor()), SIOCOUTQ, &unacknowledged) == 0;
    if (isKnown && (unacknowledged > 0 || m_socket.bytesToWrite() > 0))
        lose(kGone);
}

void TcpLine::onError(QAbstractSocket::SocketError error)
{
    if (m_isConnecting) {
        if (m_error.reason.isEmpty())
            m_error.reason = connectReason(error);
        m_connecting.finish();
        return;
    }
    if (m_isOpen)
        lose(error == QAbstractSocket::RemoteHostClosedError ? kClosedThere : kGone);
}

void TcpLine::lose(const QString& reason)
{
    m_error = {{}, reason, {}, {}};
    m_isOpen = false;
    m_socket.abort();
    Q_EMIT lost();
}

} // namespace platform
