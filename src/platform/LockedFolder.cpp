#include "LockedFolder.h"

#include "FileSnapshot.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kLockAttempts = 400;
constexpr timespec kLockPause{0, 5'000'000}; // 5 ms
constexpr mode_t kNewFileMode = 0644;

// The folder stands for all its files: no lock file is left behind.
bool lockFolder(int folder)
{
    for (int attempt = 0; attempt < kLockAttempts; ++attempt) {
        if (flock(folder, LOCK_EX | LOCK_NB) == 0)
            return true;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return false;
        nanosleep(&kLockPause, nullptr);
    }
    return false;
}

bool writeAll(int fd, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = write(fd, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

// Gives the new file the owner, group and rights of the one that it replaces. Empty, or why not: a file that changes
// hands by being saved might be lost to its owner.
QString takeRights(int file, const QByteArray& replaced)
{
    struct stat old
    {};
    struct stat now
    {};
    if (stat(replaced.constData(), &old) != 0)
        return fchmod(file, kNewFileMode) == 0 ? QString() : systemError();
    if (fstat(file, &now) != 0)
        return systemError();
    const bool isSameOwner = old.st_uid == now.st_uid && old.st_gid == now.st_gid;
    if (!isSameOwner && fchown(file, old.st_uid, old.st_gid) != 0)
        return QStringLiteral("its owner and group cannot be kept: ") + systemError();
    return fchmod(file, old.st_mode & 07777) == 0 ? QString() : systemError();
}

} // namespace

LockedFolder::LockedFolder(const QByteArray& folder)
    : m_folder(open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_folder < 0)
        m_error = systemError();
    else if (!lockFolder(m_folder))
        m_error = QStringLiteral("another program keeps its folder locked");
}

LockedFolder::~LockedFolder()
{
    if (m_folder >= 0)
        close(m_folder);
}

// Temporary file in the same folder, flushed, renamed over the target. The folder is locked, so the temporary name is
// free to take; one left by a killed process goes.
QString LockedFolder::replace(const QByteArray& path, const QByteArray& bytes, Flush flush) const
{
    const auto slash = path.lastIndexOf('/');
    const QByteArray temporary = path.left(slash + 1) + '.' + path.mid(slash + 1) + ".new";
    unlink(temporary.constData());
    const int file = open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return systemError();
    QString error = takeRights(file, path);
    if (error.isEmpty() && (!writeAll(file, bytes) || (flush == Flush::ToDisk && fsync(file) != 0) ||
                            rename(temporary.constData(), path.constData()) != 0))
        error = systemError();
    if (!error.isEmpty())
        unlink(temporary.constData());
    close(file);
    if (error.isEmpty() && flush == Flush::ToDisk)
        fsync(m_folder);
    return error;
}

} // namespace platform
