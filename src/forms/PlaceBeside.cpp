#include "PlaceBeside.h"

#include <algorithm>

namespace platform {

namespace {

int inside(int at, int length, int from, int room)
{
    return std::max(std::min(at, from + room - length), from);
}

qint64 covered(const QRect& a, const QRect& b)
{
    const QRect common = a.intersected(b);
    return static_cast<qint64>(common.width()) * common.height();
}

} // namespace

QPoint placeInside(const QRect& window, const QRect& room)
{
    return {inside(window.left(), window.width(), room.left(), room.width()),
            inside(window.top(), window.height(), room.top(), room.height())};
}

QPoint placeBeside(const QRect& other, const QSize& window, const QRect& room)
{
    const int left = other.left();
    const int top = other.top();
    const QPoint wanted[] = {{left + other.width(), top},
                             {left - window.width(), top},
                             {left, top + other.height()},
                             {left, top - window.height()}};
    QRect best;
    for (const QPoint& at : wanted) {
        const QRect place(placeInside({at, window}, room), window);
        if (best.isNull() || covered(place, other) < covered(best, other))
            best = place;
    }
    return best.topLeft();
}

} // namespace platform
