#pragma once

#include "Clock.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

// The way of a controller's replies onto the line. A reply may be held back before it starts, whatever is asked in the
// meantime, and goes byte by byte at the pace of a real wire when one is set. Replies that meet on the wire go out one
// behind the other; none is lost. clock must outlive the wire.
class ReplyWire : public QObject
{
    Q_OBJECT

public:
    // paceBaud 0: no pacing; else every byte of request and reply takes 10 bits of this speed.
    ReplyWire(platform::Clock& clock, int paceBaud, QObject* parent = nullptr);

    // requestBytes: of the request that is answered, for the pace. delayMs 0: at once.
    void put(const QByteArray& reply, qsizetype requestBytes, int delayMs);

Q_SIGNALS:
    void passed(const QByteArray& bytes); // these bytes leave now

private:
    struct Held
    {
        qint64 dueMs = 0;
        QByteArray reply;
        qsizetype requestBytes = 0;
    };
    void release();
    void armHold();
    void start(const QByteArray& reply, qsizetype requestBytes);
    void deliver();

    platform::Clock& m_clock;
    const int m_paceBaud;
    std::vector<Held> m_held; // the earliest first
    std::unique_ptr<platform::Timer> m_hold;
    QTimer m_pace; // the bytes that are on the wire
    QElapsedTimer m_sinceRequest;
    QByteArray m_onWire;
    qsizetype m_delivered = 0;
    qsizetype m_requestBytes = 0;
};
