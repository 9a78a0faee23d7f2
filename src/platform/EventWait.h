#pragma once

#include <QEventLoop>

namespace platform {

// The one way to wait for something that an event will bring: run() dispatches events until finish() is called from a
// handler. No busy loop. A second run() inside the first is refused (returns at once).
class EventWait
{
public:
    void run();    // returns at once when finish() came since arm()
    void arm();    // before the action that starts the awaited event
    void finish(); // from the handler
    bool isRunning() const { return m_running; }

private:
    QEventLoop m_loop;
    bool m_finished = true;
    bool m_running = false;
};

// Lets events that are already pending run once; returns without waiting.
void dispatchPendingEvents();

// The same for painting, timers and sockets only: keys, mouse and window closing wait for their turn.
void dispatchWithoutInput();

} // namespace platform
