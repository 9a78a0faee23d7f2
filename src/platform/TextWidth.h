#pragma once

#include <QString>

namespace platform {

// Columns that a text takes where every character has one or two of them, as in a terminal: two for a full-width
// character, none for a combining mark.
int displayWidth(const QString& text);

} // namespace platform
