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
    explicit IdleClock(FakeClock& clock) : m_clock(clock)
    {
        QObject::connect(&m_round, &QTimer::timeout, &m_round, [this] { round(); });
        m_round.start(0);
    }

    void touch() { m_quietRounds = 0; }

private:
    static constexpr int kQuietRounds = 10; // a request and its reply need four
    static constexpr int kStepMs = 100;

    void round()
    {
        if (++m_quietRounds < kQuietRounds)
            return;
        m_quietRounds = 0;
        m_clock.advance(kStepMs);
    }

    FakeClock& m_clock;
    QTimer m_round;
    int m_quietRounds = 0;
};
