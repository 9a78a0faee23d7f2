#pragma once

#include "Result.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace platform {

// By what two states of a file differ.
struct FileState
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1; // -1: no file
    timespec time{};

    bool exists() const { return size >= 0; }
    bool operator==(const FileState& other) const;

    // As it is now; no file for a path that cannot be looked at.
    static FileState of(const QByteArray& path);
};

// The content of a file at one moment: whole, or an error. A file that is not there is whole and empty. Paths are
// encoded machine paths.
struct FileSnapshot
{
    FileState state;
    Result<QByteArray> content; // a failure: the file, which may be there, could not be read whole

    // A folder, a pipe or device (opening it could wait for ever) and a file above maxBytes are not read.
    static FileSnapshot read(const QByteArray& path, qint64 maxBytes);
};

QString systemError(); // the text of errno

} // namespace platform
