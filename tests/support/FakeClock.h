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
    FakeClock() : m_now(QDate(2007, 3, 5), QTime(14, 7, 9, 42)) {}

    QDateTime now() const override { return m_now; }
    void setNow(const QDateTime& now) { m_now = now; }

    std::unique_ptr<platform::Timer> makeTimer() override
    {
        auto timer = std::make_unique<FakeTimer>(*this);
        m_timers.push_back(timer.get());
        return timer;
    }

    void advance(int ms)
    {
        const QDateTime end = m_now.addMSecs(ms);
        while (FakeTimer* next = nextDue(end)) {
            m_now = std::max(m_now, next->due);
            next->due = m_now.addMSecs(next->interval);
            Q_EMIT next->timeout();
        }
        m_now = end;
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
            due = m_clock.m_now.addMSecs(interval);
            active = true;
        }
        void stop() override { active = false; }
        bool isActive() const override { return active; }

        QDateTime due;
        int interval = 1;
        bool active = false;

    private:
        FakeClock& m_clock;
    };

    FakeTimer* nextDue(const QDateTime& end)
    {
        FakeTimer* next = nullptr;
        for (FakeTimer* timer : m_timers) {
            if (timer->active && timer->due <= end && (next == nullptr || timer->due < next->due))
                next = timer;
        }
        return next;
    }

    QDateTime m_now;
    std::vector<FakeTimer*> m_timers;
};
