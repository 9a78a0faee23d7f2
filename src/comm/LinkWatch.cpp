#include "LinkWatch.h"

#include "Clock.h"
#include "uclComm.h"

#include <QScopedValueRollback>

#include <utility>

LinkWatch::LinkWatch(uclComm& link, platform::Clock& clock, std::function<bool()> mayOpen, QObject* parent)
    : QObject(parent), m_link(link), m_mayOpen(std::move(mayOpen)), m_timer(clock.makeTimer())
{
    connect(m_timer.get(), &platform::Timer::timeout, this, &LinkWatch::look);
    m_timer->start(kLookMs);
}

LinkWatch::~LinkWatch() = default;

void LinkWatch::forget()
{
    m_wasOpen = m_link.State() != 0;
    set(State::Quiet);
}

void LinkWatch::set(State state)
{
    if (std::exchange(m_state, state) != state)
        Q_EMIT changed();
}

// A port that was never open is no lost one.
void LinkWatch::look()
{
    if (m_isLooking)
        return;
    const QScopedValueRollback<bool> looking(m_isLooking, true);
    if (m_link.State() != 0) {
        m_wasOpen = true;
        if (m_state == State::Lost)
            set(State::Back);
        return;
    }
    if (!m_wasOpen || !m_mayOpen())
        return;
    set(State::Lost);
    if (m_link.openComm())
        set(State::Back);
}
