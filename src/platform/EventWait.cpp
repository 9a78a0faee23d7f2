#include "EventWait.h"

#include <QCoreApplication>

namespace platform {

void EventWait::arm()
{
    m_finished = false;
}

void EventWait::run()
{
    if (m_finished || m_running)
        return;
    m_running = true;
    m_loop.exec();
    m_running = false;
}

void EventWait::finish()
{
    m_finished = true;
    m_loop.quit();
}

void dispatchPendingEvents()
{
    QCoreApplication::processEvents();
}

void dispatchWithoutInput()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace platform
