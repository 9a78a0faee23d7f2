#include "Clock.h"

#include <QTimer>

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

std::unique_ptr<Timer> SystemClock::makeTimer()
{
    return std::make_unique<SystemTimer>();
}

} // namespace platform
