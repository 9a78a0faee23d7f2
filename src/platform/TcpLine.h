#pragma once

#include "EventWait.h"
#include "LineDevice.h"
#include "ServerAddress.h"

#include <QDeadlineTimer>
#include <QTcpSocket>
#include <QTimer>

namespace platform {

// The bytes of a line over a TCP connection, as they are. Speed, format and control lines are the server's matter.
// The connection is kept alive: a server that has gone without a word is noticed within half a minute.
class TcpLine final : public LineDevice
{
    Q_OBJECT

public:
    static constexpr qint64 kMostUnsent = 65536; // bytes that wait for a server that takes nothing

    TcpLine(ServerAddress address, int timeoutMs, QObject* parent = nullptr); // timeoutMs: to connect
    ~TcpLine() override;

    [[nodiscard]] bool open(const LineSettings& settings) override;
    [[nodiscard]] bool connectUntil(QDeadlineTimer deadline);
    void close() override;
    bool isOpen() const override { return m_isOpen; }
    bool setFormat(const LineSettings& settings) override;
    void setDtr(bool on) override { Q_UNUSED(on); }
    void setRts(bool on) override { Q_UNUSED(on); }
    void setReadBufferSize(int bytes) override { m_socket.setReadBufferSize(bytes); }
    qint64 bytesAvailable() const override { return m_socket.bytesAvailable(); }
    QByteArray readAll() override { return m_socket.readAll(); }
    [[nodiscard]] bool write(const QByteArray& bytes) override;
    // Bytes that have come by now go to the caller's own buffer. False: nothing more is there.
    bool takeIn();
    void discardInput() override;
    // What the network has not taken by now it will not take: the line is lost then.
    void discardOutput() override;

private:
    void setOptions();
    void acknowledgeAtOnce();
    void onError(QAbstractSocket::SocketError error);
    void lose(const QString& reason);

    ServerAddress m_address;
    int m_timeoutMs;
    QTcpSocket m_socket;
    EventWait m_connecting;
    QTimer m_limit;
    bool m_isConnecting = false;
    bool m_isOpen = false;
};

} // namespace platform
