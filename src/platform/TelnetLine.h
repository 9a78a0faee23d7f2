#pragma once

#include "ComPortOption.h"
#include "TcpLine.h"

namespace platform {

// The bytes of a line behind a serial server that takes the COM port option (RFC 2217): speed, format and control
// lines are set at the far end.
class TelnetLine final : public LineDevice
{
    Q_OBJECT

public:
    TelnetLine(const ServerAddress& address, int timeoutMs, QObject* parent = nullptr); // until the line is set

    [[nodiscard]] bool open(const LineSettings& settings) override;
    void close() override;
    bool isOpen() const override { return m_isOpen; }
    bool setFormat(const LineSettings& settings) override; // true: an answer that differs loses the line
    void setDtr(bool on) override;
    void setRts(bool on) override;
    void setReadBufferSize(int bytes) override;
    qint64 bytesAvailable() const override { return m_bytes.size(); }
    QByteArray readAll() override;
    [[nodiscard]] bool write(const QByteArray& bytes) override;
    void discardInput() override;
    void discardOutput() override;

private:
    bool negotiate(QDeadlineTimer deadline);
    void onReadyRead();
    void decode();
    void sendOutput();
    void onLost();

    TcpLine m_tcp;
    ComPortOption m_option;
    LineSettings m_settings;
    int m_timeoutMs;
    qsizetype m_bufferSize = 1024;
    QByteArray m_bytes;
    EventWait m_negotiating;
    QTimer m_limit;
    bool m_isOpen = false;
};

} // namespace platform
