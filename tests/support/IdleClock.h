#pragma once

#include "FakeClock.h"

#include <QObject>
#include <QTimer>

// Lets a fake clock run while nothing moves on a line: when several rounds of the event loop have passed without a
// touch() the clock advances by one step. So time-outs come without anybody waiting for them, and never before bytes
// that are on their way have been taken.
class IdleClock
{
public:
    explicit IdleClock(FakeClock& clock, int stepMs = 100, int roundMs = 0) : m_clock(clock), m_stepMs(stepMs)
    {
        QObject::connect(&m_round, &QTimer::timeout, &m_round, [this] { round(); });
        m_round.start(roundMs);
    }

    void touch() { m_quietRounds = 0; }

private:
    static constexpr int kQuietRounds = 10; // a request and its reply need four

    void round()
    {
        if (++m_quietRounds < kQuietRounds)
            return;
        m_quietRounds = 0;
        m_clock.advance(m_stepMs);
    }

    FakeClock& m_clock;
    int m_stepMs;
    QTimer m_round;
    int m_quietRounds = 0;
};
