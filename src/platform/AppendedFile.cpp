#include "AppendedFile.h"

#include "FileReplacement.h"
#include "FileSnapshot.h"
#include "LockedFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kOwnerOnly = 0600;

// A new name is on the disk when its folder is.
bool flushFolder(const QByteArray& path)
{
    const int folder = open(folderOf(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isFlushed = folder >= 0 && fsync(folder) == 0;
    if (folder >= 0)
        close(folder);
    return isFlushed;
}

bool endsInsideALine(int file, off_t length)
{
    char last = '\n';
    return length > 0 && pread(file, &last, 1, length - 1) == 1 && last != '\n';
}

// Under the lock of the file.
Result<> appendTo(int file, const QByteArray& path, const QByteArray& line)
{
    struct stat info
    {};
    if (fstat(file, &info) != 0)
        return Failure{systemError()};
    const off_t length = info.st_size;
    const QByteArray bytes = (endsInsideALine(file, length) ? "\n" + line : line) + '\n';
    if (writeAll(file, bytes) && fsync(file) == 0 && (length > 0 || flushFolder(path)))
        return {};
    const QString reason = systemError();
    if (ftruncate(file, length) == 0)
        return Failure{reason};
    return Failure{QStringLiteral("%1; half a line is left: %2").arg(reason, systemError())};
}

Result<> appendLocked(int file, const QByteArray& path, const QByteArray& line)
{
    struct stat info
    {};
    if (fstat(file, &info) != 0)
        return Failure{systemError()};
    if (!S_ISREG(info.st_mode))
        return Failure{QStringLiteral("it is not a regular file")};
    return waitForLock(file) ? appendTo(file, path, line) : Failure{lockError(QStringLiteral("it"))};
}

} // namespace

Result<> appendLine(const QByteArray& path, const QByteArray& line)
{
    constexpr int kFlags = O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int file = open(path.constData(), kFlags, kOwnerOnly);
    if (file < 0)
        return Failure{systemError()};
    const Result<> appended = appendLocked(file, path, line);
    close(file);
    return appended;
}

} // namespace platform
