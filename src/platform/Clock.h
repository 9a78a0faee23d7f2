#pragma once

#include <QDateTime>
#include <QObject>
#include <memory>

namespace platform {

constexpr qint64 kMsPerSecond = 1000;

// A repeating timer of a Clock. Emits timeout() every intervalMs while active.
class Timer : public QObject
{
    Q_OBJECT

public:
    virtual void start(int intervalMs) = 0;
    virtual void stop() = 0;
    virtual bool isActive() const = 0;

Q_SIGNALS:
    void timeout();
};

// Wall clock, running time and timers, so that time-outs and stamps can be tested without waiting. Durations are
// differences of elapsedMs(): the wall clock may be set at any time.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;    // local time, milliseconds; for stamps
    virtual qint64 elapsedMs() const = 0; // since a fixed moment; never runs back
    virtual std::unique_ptr<Timer> makeTimer() = 0;
};

// The machine's own clock.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    qint64 elapsedMs() const override;
    std::unique_ptr<Timer> makeTimer() override;
};

} // namespace platform
