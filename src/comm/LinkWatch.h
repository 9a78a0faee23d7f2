#pragma once

#include <QObject>

#include <functional>
#include <memory>

class uclComm;

namespace platform {
class Clock;
class Timer;
} // namespace platform

// Opens a port again that was lost, as soon as it is there again: an adapter that was plugged in, a server that
// accepts. Nothing that was under way is resumed. The link and the clock are kept by reference.
class LinkWatch : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLookMs = 1000;

    enum class State { Quiet, Lost, Back };

    // mayOpen: whether nobody else is at the port now.
    LinkWatch(uclComm& link, platform::Clock& clock, std::function<bool()> mayOpen, QObject* parent = nullptr);
    ~LinkWatch() override;

    State state() const { return m_state; }
    void forget(); // the port was chosen anew, or its return is no news any more

Q_SIGNALS:
    void changed();

private:
    void look();
    void set(State state);

    uclComm& m_link;
    std::function<bool()> m_mayOpen;
    std::unique_ptr<platform::Timer> m_timer;
    State m_state = State::Quiet;
    bool m_wasOpen = false;
    bool m_isLooking = false; // opening a server dispatches events
};
