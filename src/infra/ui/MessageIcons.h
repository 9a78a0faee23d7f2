#pragma once

#include "MessageBoxPlan.h"

#include <QPixmap>
#include <QString>

// The picture of a message's icon, sharp at the device pixel ratio given: the desktop theme's own, else one that is
// drawn here. None has none. side: device-independent pixels.
QPixmap messagePixmap(MessageIcon icon, int side, qreal devicePixelRatio);

// What a screen reader says for it, in English.
QString messageIconName(MessageIcon icon);
