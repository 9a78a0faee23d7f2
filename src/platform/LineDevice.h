#pragma once

#include "LineFormat.h"

#include <QByteArray>
#include <QObject>
#include <QString>

namespace platform {

// Why a port could not be opened or was lost. pattern names the port by %1 (its number) and %2 (its device, may be
// empty); reason says why, with the remedy. Both are whole sentences or phrases of their own, so that they can be
// translated.
struct PortError
{
    QString pattern; // empty: all is well
    QString reason;  // %1 is the lock file and %2 the process, when there is a lock
    QString lockFile;
    QString process;

    // A reason, translated or not, with what it names.
    QString inWords(const QString& text) const { return lockFile.isEmpty() ? text : text.arg(lockFile, process); }
};

enum class Handshake { None, Software, Hardware };

// How a line works: at this machine's own port, or at the far end of a serial server.
struct LineSettings
{
    qint32 speed = 9600; // bits per second
    LineFormat format;
    Handshake handshake = Handshake::None;
    bool dtr = false;
    bool rts = false; // means nothing with Handshake::Hardware
};

// What a port stands for: a serial device of this machine, or a connection to a serial server. Bytes only; nothing here
// knows what they mean. A line is opened once: what comes after it was closed or lost is a new one.
class LineDevice : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // May dispatch events for as long as a connection may take; close() ends that. False: error() has the reason.
    [[nodiscard]] virtual bool open(const LineSettings& settings) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    // Of an open line. False where the device refuses them at once.
    virtual bool setFormat(const LineSettings& settings) = 0;
    virtual void setDtr(bool on) = 0;
    virtual void setRts(bool on) = 0;

    virtual void setReadBufferSize(int bytes) = 0; // before open; more than that waits in the machine or is lost there
    virtual qint64 bytesAvailable() const = 0;
    virtual QByteArray readAll() = 0;
    // Never waits for the line. False: the line is closed, or takes nothing any more.
    [[nodiscard]] virtual bool write(const QByteArray& bytes) = 0;
    virtual void discardInput() = 0;  // what has come by now, also what the machine still holds
    virtual void discardOutput() = 0; // what has not gone out yet, as far as it can be called back

    const PortError& error() const { return m_error; } // its reason; the pattern is the port's

Q_SIGNALS:
    void readyRead();
    void lost(); // an open line has gone: error() has the reason

protected:
    static constexpr int kMaxFlushes = 100; // a line that never falls silent is no reason to wait

    // Whether one of the events of poll(2) has come, or the device has gone.
    static bool isReady(qintptr fd, short events);

    PortError m_error;
};

} // namespace platform
