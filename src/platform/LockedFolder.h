#pragma once

#include "FileReplacement.h"

#include <QByteArray>

#include <utility>

namespace platform {

// Waits for the exclusive lock of an open file or folder, two seconds at most. False with errno.
bool waitForLock(int descriptor);
// Why waitForLock gave up.
QString lockError(const QString& locked);

// One folder whose files are replaced whole or not at all. The advisory lock on the folder is held for as long as the
// object lives, so that programs that take turns lose nothing to each other. Paths are encoded machine paths.
class LockedFolder
{
public:
    // Waits for the lock, two seconds at most.
    static Result<LockedFolder> lock(const QByteArray& folder);
    ~LockedFolder();
    LockedFolder(LockedFolder&& other) noexcept : m_folder(std::exchange(other.m_folder, -1)) {}
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

    // Puts bytes in the place of a file of this folder, see replaceInFolder.
    Result<> replace(const QByteArray& path, const QByteArray& bytes, Flush flush = Flush::ToDisk) const;

private:
    explicit LockedFolder(int folder) : m_folder(folder) {}

    int m_folder; // descriptor; -1 when moved from
};

} // namespace platform
