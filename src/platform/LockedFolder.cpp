#include "LockedFolder.h"

#include "FileSnapshot.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kLockAttempts = 400;
constexpr timespec kLockPause{0, 5'000'000}; // 5 ms

} // namespace

bool waitForLock(int descriptor)
{
    for (int attempt = 0; attempt < kLockAttempts; ++attempt) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            return true;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        nanosleep(&kLockPause, nullptr);
    }
    errno = EWOULDBLOCK;
    return false;
}

QString lockError(const QString& locked)
{
    return errno == EWOULDBLOCK ? QStringLiteral("another program keeps %1 locked").arg(locked) : systemError();
}

Result<LockedFolder> LockedFolder::lock(const QByteArray& folder)
{
    LockedFolder opened(open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.m_folder < 0)
        return Failure{systemError()};
    if (!waitForLock(opened.m_folder)) // the folder stands for all its files: no lock file is left behind
        return Failure{lockError(QStringLiteral("its folder"))};
    return opened;
}

LockedFolder::~LockedFolder()
{
    if (m_folder >= 0)
        close(m_folder);
}

Result<> LockedFolder::replace(const QByteArray& path, const QByteArray& bytes, Flush flush) const
{
    return replaceInFolder(m_folder, path.mid(path.lastIndexOf('/') + 1), bytes, flush);
}

} // namespace platform
