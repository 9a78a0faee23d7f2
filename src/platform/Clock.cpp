#include "Clock.h"

#include <QTimer>

#include <chrono>

namespace platform {

namespace {

class SystemTimer final : public Timer
{
public:
    SystemTimer() { connect(&m_timer, &QTimer::timeout, this, &Timer::timeout); }
    void start(int intervalMs) override { m_timer.start(intervalMs); }
    void stop() override { m_timer.stop(); }
    bool isActive() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

qint64 SystemClock::elapsedMs() const
{
    const auto elapsed = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
}

std::unique_ptr<Timer> SystemClock::makeTimer()
{
    return std::make_unique<SystemTimer>();
}

} // namespace platform
