#pragma once

#include "Result.h"

#include <QByteArray>

namespace platform {

// Adds one line to the end of a file that only grows, made when it is missing (for its owner alone), and flushes it to
// the disk. line: without a line break. Programs that append at the same time take turns. What a killed program left as
// half a line becomes a line of its own. Path: an encoded machine path; its folder must be there.
//
// A failure leaves the file as it was: no room, no right, a link, a device or anything else that is no regular file.
Result<> appendLine(const QByteArray& path, const QByteArray& line);

} // namespace platform
