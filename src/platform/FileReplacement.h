#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

// The one way in which files are written: whole or not at all. A temporary file of an unpredictable name in the same
// folder takes the bytes, is flushed to the disk and renamed over the target. What a killed save left in the folder is
// removed by the next one. Paths are encoded machine paths; results are empty, or why the file is what it was before.

enum class Flush {
    ToDisk,
    Later // for what is made again when a power cut takes it
};

// Descriptor of a folder whose files are to be replaced; -1 with errno.
int openFolder(const QByteArray& folder);

// Puts bytes in the place of a file of an open folder, which keeps its access rights (without set-ID bits), owner and
// group; those of a new file follow the umask. Only a regular file is replaced.
QString replaceInFolder(int folder, const QByteArray& name, const QByteArray& bytes, Flush flush);

// The same for a file that a person named: a link stays a link, and a device or pipe takes the bytes, unless another
// user put it into a folder that all may write to: nobody may be reading there.
QString writeWholeFile(const QByteArray& path, const QByteArray& bytes);

// The file behind a chain of links, whether it is there or not. A link that another user put into a folder that all may
// write to is not followed: error says so.
QByteArray behindLinks(const QByteArray& path, QString& error);

// For a file that is written in place: whether it is missing or a regular one that no other user's link leads to. What
// else stands there would make the program wait, or change somebody's file.
bool mayWriteInPlace(const QByteArray& path);

// Why the user may not write a file that is there; empty when it is not.
QString writeRefusal(const QByteArray& path);

// The folder of a path.
QByteArray folderOf(const QByteArray& path);

} // namespace platform
