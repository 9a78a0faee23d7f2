#pragma once

#include "LineDevice.h"

#include <QSerialPort>

namespace platform {

// A serial device of this machine. The lock file of the device keeps other programs off it.
class SerialLine final : public LineDevice
{
    Q_OBJECT

public:
    explicit SerialLine(QString device, QObject* parent = nullptr); // "/dev/ttyUSB0"
    ~SerialLine() override;

    [[nodiscard]] bool open(const LineSettings& settings) override;
    void close() override;
    bool isOpen() const override { return m_port.isOpen(); }
    bool setFormat(const LineSettings& settings) override;
    void setDtr(bool on) override { m_port.setDataTerminalReady(on); }
    void setRts(bool on) override { m_port.setRequestToSend(on); }
    void setReadBufferSize(int bytes) override { m_port.setReadBufferSize(bytes); }
    qint64 bytesAvailable() const override { return m_port.bytesAvailable(); }
    QByteArray readAll() override { return m_port.readAll(); }
    [[nodiscard]] bool write(const QByteArray& bytes) override;
    void discardInput() override;
    void discardOutput() override { m_port.clear(QSerialPort::Output); }

private:
    bool openLocked(const QString& name, const LineSettings& settings);
    void onError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
    QString m_device;
};

} // namespace platform
