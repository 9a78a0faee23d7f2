#pragma once

#include "Clock.h"

#include <QDateTime>
#include <algorithm>
#include <limits>
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
    static constexpr qint64 kNever = std::numeric_limits<qint64>::max();

    class FakeTimer : public platform::Timer
    {
    public:
        explicit FakeTimer(FakeClock& clock) : m_clock(clock) {}
        ~FakeTimer() override { std::erase(m_clock.m_timers, this); }
        void start(int intervalMs) override
        {
            interval = std::max(intervalMs, 1);
            due = m_clock.m_elapsed + interval;
        }
        void stop() override { due = kNever; }
        bool isActive() const override { return due != kNever; }

        qint64 due = kNever;
        int interval = 1;

    private:
        FakeClock& m_clock;
    };

    FakeTimer* nextDue(qint64 end) const
    {
        const auto next = std::ranges::min_element(m_timers, {}, &FakeTimer::due);
        return next != m_timers.end() && (*next)->due <= end ? *next : nullptr;
    }

    QDateTime m_start{QDate(2007, 3, 5), QTime(14, 7, 9)};
    qint64 m_elapsed = 42;
    std::vector<FakeTimer*> m_timers;
};
