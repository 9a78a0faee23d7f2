#pragma once

#include "Clock.h"

#include <QDateTime>
#include <algorithm>
#include <memory>
#include <vector>

// A clock that stands still until a test advances it; its timers fire inside advance(), in the order in which they are
// due.
class FakeClock : public platform::Clock
{
public:
    QDateTime now() const override { return m_start.addMSecs(m_elapsed); }
    qint64 elapsedMs() const override { return m_elapsed; }
    void setNow(const QDateTime& now) { m_start = now.addMSecs(-m_elapsed); } // as somebody sets the machine's clock

    std::unique_ptr<platform::Timer> makeTimer() override
    {
        auto timer = std::make_unique<FakeTimer>(*this);
        m_timers.push_back(timer.get());
        return timer;
    }

    void advance(int ms)
    {
        const qint64 end = m_elapsed + ms;
        while (FakeTimer* next = nextDue(end)) {
            m_elapsed = std::max(m_elapsed, next->due);
            next->due = m_elapsed + next->interval;
            Q_EMIT next->timeout();
        }
        m_elapsed = end;
    }

private:
    class FakeTimer : public platform::Timer
    {
    public:
        explicit FakeTimer(FakeClock& clock) : m_clock(clock) {}
        ~FakeTimer() override { std::erase(m_clock.m_timers, this); }
        void start(int intervalMs) override
        {
            interval = std::max(intervalMs, 1);
            due = m_clock.m_elapsed + interval;
            active = true;
        }
        void stop() override { active = false; }
        bool isActive() const override { return active; }

        qint64 due = 0;
        int interval = 1;
        bool active = false;

    private:
        FakeClock& m_clock;
    };

    FakeTimer* nextDue(qint64 end)
    {
        FakeTimer* next = nullptr;
        for (FakeTimer* timer : m_timers) {
            if (timer->active && timer->due <= end && (next == nullptr || timer->due < next->due))
                next = timer;
        }
        return next;
    }

    QDateTime m_start{QDate(2007, 3, 5), QTime(14, 7, 9)};
    qint64 m_elapsed = 42;
    std::vector<FakeTimer*> m_timers;
};
