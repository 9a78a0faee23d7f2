#pragma once

#include "OptionValues.h"

#include <functional>
#include <optional>

class QWidget;

// Asks the user for a font, starting with the one given; nothing when the user cancelled.
using FontChooser = std::function<std::optional<FontRecord>(QWidget* owner, const FontRecord& current)>;

// The desktop's own font dialog.
std::optional<FontRecord> chooseFont(QWidget* owner, const FontRecord& current);
