#pragma once

#include "ComPorts.h"
#include "LineDevice.h"

#include <QByteArray>
#include <QObject>

#include <memory>

namespace platform {

// Event codes of the serial control, with its own numbers.
enum class CommEvent {
    None = 0,
    Send = 1,
    Receive = 2,
    CTS = 3,
    DSR = 4,
    CD = 5,
    Ring = 6,
    Eof = 7,
    Break = 1001,
    Frame = 1004,
    Overrun = 1006,
    RxOver = 1008,
    RxParity = 1009,
    TxFull = 1010,
    DCB = 1011 // the port can no longer be controlled: the adapter has gone
};

// The serial control: one port, event-driven. Set the properties, open with openPort(), write with Output(), and read
// with Input() after OnComm. Nothing blocks; opening a serial server dispatches events until it is connected.
// Properties may be changed while the port is closed; those that the open port understands (settings, lines) take
// effect at once.
class MSComm : public QObject
{
    Q_OBJECT

public:
    static constexpr int kConnectTimeoutMs = 3000; // to a serial server, until its line is set

    explicit MSComm(const ComPorts& ports, QObject* parent = nullptr, int connectTimeoutMs = kConnectTimeoutMs);
    ~MSComm() override;

    int CommPort() const;
    void setCommPort(int number); // COMn, 1 to 99; other numbers are ignored
    // A device or serial server in place of COMn; empty: none.
    void setPortName(const QString& name) { m_portName = name; }
    QString portDevice() const; // what the next opening opens; empty: there is no such port
    bool isServer() const;      // whether that is a serial server, well-formed
    QString Settings() const;   // "9600,N,8,1": speed, parity (N E O M S), data bits 5 to 8, stop bits 1, 1.5, 2
    bool setSettings(const QString& settings); // false and unchanged when the text makes no sense
    void setInBufferSize(int bytes);           // 1 and up
    void setDTREnable(bool on);
    void setRTSEnable(bool on);
    void setNullDiscard(bool on);  // drop received zero bytes
    void setHandshaking(int mode); // 0 none, 1 XON/XOFF, 2 RTS/CTS, 3 both
    void setInputMode(int mode);   // 0 text, 1 binary; kept, input is always bytes
    void setRThreshold(int bytes); // bytes in the input buffer that raise OnComm(Receive); 0: never

    bool PortOpen() const;
    // False when the port could not be opened: see error(). While it is being opened another call gives false at once.
    [[nodiscard]] bool openPort();
    void closePort(); // also ends an opening that waits
    bool isOpening() const { return m_isOpening; }

    // Of the last opening or of an open port; the text is its English form, empty when all is well.
    const PortError& error() const { return m_error; }
    QString errorText() const;
    QString device() const { return m_device; } // that the port stood for at the last opening

    QByteArray Input();                                 // takes everything out of the input buffer
    void discardInput();                                // what has come by now, also what the kernel still holds
    void discardOutput();                               // what has not gone out yet
    [[nodiscard]] bool Output(const QByteArray& bytes); // false when the port is closed
    CommEvent Event() const;                            // of the last OnComm

Q_SIGNALS:
    void OnComm();

private:
    void raise(CommEvent event);
    void onReadyRead();
    void onLost();
    bool makeLine();
    bool refuse(const PortError& error); // always false
    LineSettings lineSettings() const;
    bool applySettings();

    const ComPorts& m_ports;
    int m_connectTimeoutMs;
    std::unique_ptr<LineDevice> m_line; // of the last opening
    bool m_isOpening = false;
    QString m_portName;
    QString m_device; // that the port stands for, since the last opening
    int m_commPort = 1;
    QString m_settings = QStringLiteral("9600,N,8,1");
    int m_inBufferSize = 1024;
    int m_rThreshold = 0;
    int m_handshaking = 0;
    int m_inputMode = 0;
    bool m_dtr = false;
    bool m_rts = false;
    bool m_nullDiscard = false;
    CommEvent m_event = CommEvent::None;
    PortError m_error;
};

} // namespace platform
