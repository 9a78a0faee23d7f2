#pragma once

#include "Result.h"

#include <QString>

namespace platform {

// Moves the plain files of a folder into another one, which is made when it is missing, and removes the folder when
// nothing is left in it. A name that is taken there is never replaced: that file stays. Killed at any moment, each file
// is whole in one of the two places. Machine paths; a folder that does not exist holds nothing. Fails with the first
// file that could not be moved.
Result<> moveFiles(const QString& from, const QString& to);

} // namespace platform
