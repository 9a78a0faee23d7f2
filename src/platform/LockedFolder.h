#pragma once

#include "FileReplacement.h"

#include <QByteArray>
#include <QString>

namespace platform {

// One folder whose files are replaced whole or not at all. The advisory lock on the folder is held for as long as the
// object lives, so that programs that take turns lose nothing to each other. Paths are encoded machine paths.
class LockedFolder
{
public:
    // Waits for the lock, two seconds at most.
    explicit LockedFolder(const QByteArray& folder);
    ~LockedFolder();
    LockedFolder(const LockedFolder&) = delete;
    LockedFolder& operator=(const LockedFolder&) = delete;

    // Why the folder could not be locked; empty when it is.
    QString error() const { return m_error; }

    // Puts bytes in the place of a file of this folder, see replaceInFolder. Call only without error().
    QString replace(const QByteArray& path, const QByteArray& bytes, Flush flush = Flush::ToDisk) const;

private:
    int m_folder;
    QString m_error;
};

} // namespace platform
