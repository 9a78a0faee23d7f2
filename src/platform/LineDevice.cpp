#include "LineDevice.h"

#include <poll.h>

namespace platform {

bool LineDevice::isReady(qintptr fd, short events)
{
    pollfd state{static_cast<int>(fd), events, 0};
    return poll(&state, 1, 0) > 0;
}

} // namespace platform
