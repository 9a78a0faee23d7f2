#pragma once

#include "Clock.h"
#include "SimulatedController.h"

#include <memory>
#include <vector>

// A change of a running controller's memory.
struct Poke
{
    quint32 address = 0;
    QByteArray bytes;
    int atMs = 0; // after the start
};

// Somebody at the front panel of a simulated controller: changes its memory while it runs, at set times or when told.
// controller and clock must outlive it.
class FrontPanel : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxSeconds = 86400;

    FrontPanel(SimulatedController& controller, platform::Clock& clock, QObject* parent = nullptr);

    // "ADDRESS=BYTES@SECONDS", the first two in hexadecimal: "8000=0A1B@2.5". 1 to 120 bytes, 0 to kMaxSeconds. Before
    // start; refuses, with the reason, what is none and what the controller has no memory for.
    platform::Result<> add(const QString& poke);

    // "poke ADDRESS=BYTES", at once. Refused like the above, with nothing changed.
    platform::Result<> obey(const QString& line);

    // From here on the times count. Those of one moment are in the order in which they were added.
    void start();

private:
    void release();

    SimulatedController& m_controller;
    platform::Clock& m_clock;
    std::vector<Poke> m_pokes; // the earliest first
    qint64 m_startMs = 0;
    std::unique_ptr<platform::Timer> m_timer;
};
