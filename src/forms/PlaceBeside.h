#pragma once

#include <QPoint>
#include <QRect>

namespace platform {

// Where a window of that outer size covers least of another one, all on one screen, in one unit of length: beside it,
// below or above it, where there is room; else at the side of the screen that is farthest from it. The window is inside
// of the room; one that is larger begins at its top left corner, where its title bar is.
QPoint placeBeside(const QRect& other, const QSize& window, const QRect& room);

// The place of a window, moved as little as needed to be inside of the room; as above if it is larger.
QPoint placeInside(const QRect& window, const QRect& room);

} // namespace platform
