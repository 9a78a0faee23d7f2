#pragma once

#include "Faults.h"
#include "ReplyWire.h"
#include "SimulatedController.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

// The line of a simulated controller: a pseudo-terminal of its own or an open device. Cuts what arrives into requests
// (RTU by the length that the function code gives, ASCII from ":" to line feed), has the controller answer, and
// delivers the reply, with the faults and at the pace of a real wire when one is set.
class SimulatorLine : public QObject
{
    Q_OBJECT

public:
    // paceBaud 0: no pacing; else every byte of request and reply takes 10 bits of this speed. controller and clock
    // must outlive the line.
    SimulatorLine(SimulatedController& controller, Faults faults, int paceBaud, platform::Clock& clock,
                  QObject* parent = nullptr);
    ~SimulatorLine() override;

    // Both return false with the reason in errorText.
    bool openTerminal();
    bool openDevice(const QString& device, int speed, const QString& chara); // chara: "N,8,1"

    QString path() const { return m_path; } // what a client opens
    QString errorText() const { return m_errorText; }

    // From the next request on. Replies that are held back still come.
    void setFaults(const Faults& faults) { m_faults = faults; }

Q_SIGNALS:
    void traced(const QString& direction, const QByteArray& bytes);

private:
    bool startServing();
    void watchClients();
    void onClientGone();
    void onReadable();
    void serveBuffer();
    int requestLength() const; // bytes of the request at the head of the buffer, 0: not known yet
    void handle(const QByteArray& request);
    void send(const QByteArray& bytes);

    SimulatedController& m_controller;
    Faults m_faults;
    int m_fd = -1;
    int m_clientEnd = -1; // kept open, so that clients may come and go
    QString m_path;
    QString m_errorText;
    int m_watch = -1; // of the terminal, for clients that go
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QSocketNotifier> m_clientGone;
    std::unique_ptr<platform::Timer> m_gap; // silence in the middle of a request
    ReplyWire m_wire;
    QByteArray m_buffer;
};
