#pragma once

#include "Result.h"

#include <QByteArray>

namespace platform {

// The one way in which files are written: whole or not at all. A temporary file of an unpredictable name in the same
// folder takes the bytes, is flushed to the disk and renamed over the target. What a killed save left in the folder is
// removed by the next one. Paths are encoded machine paths; a failure leaves the file as it was
// before.

// Whether a file that was replaced is on the disk when the function returns.
enum class Flush {
    ToDisk,
    Later // for what is made again when a power cut takes it
};

// Puts bytes in the place of a file of an open folder, which keeps its access rights (without set-ID bits), owner and
// group; those of a new file follow the umask. Only a regular file is replaced.
Result<> replaceInFolder(int folder, const QByteArray& name, const QByteArray& bytes, Flush flush);

// The same for a file that a person named: a link stays a link, and a device or pipe takes the bytes, unless another
// user put it into a folder that all may write to: nobody may be reading there.
Result<> writeWholeFile(const QByteArray& path, const QByteArray& bytes);

// The file behind a chain of links, whether it is there or not. A link that another user put into a folder that all may
// write to is not followed but a failure.
Result<QByteArray> behindLinks(const QByteArray& path);

// For a file that is written in place: whether it is missing or a regular one that no other user's link leads to. What
// else stands there would make the program wait, or change somebody's file.
bool mayWriteInPlace(const QByteArray& path);

// Whether the user may write a file, if it is there.
Result<> mayWrite(const QByteArray& path);

// Writes on until all bytes are written. False with errno; some of them may be written then.
bool writeAll(int file, const QByteArray& bytes);

// The folder of a path.
QByteArray folderOf(const QByteArray& path);

} // namespace platform
