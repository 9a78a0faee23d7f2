#include "FileSnapshot.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kChunkBytes = 65536;

FileState stateOf(const struct stat& info)
{
    return {info.st_dev, info.st_ino, info.st_size, info.st_mtim};
}

bool isAbsent()
{
    return errno == ENOENT || errno == ENOTDIR;
}

QString kindRefusal(const struct stat& info, qint64 maxBytes)
{
    if (S_ISDIR(info.st_mode))
        return QStringLiteral("it is a folder");
    if (!S_ISREG(info.st_mode))
        return QStringLiteral("it is not a regular file");
    return info.st_size > maxBytes ? QStringLiteral("it is too large for a settings file") : QString();
}

// Reads to the end, whatever size was announced; empty, or why it ended before.
QString readAll(int file, qint64 maxBytes, QByteArray& bytes)
{
    for (;;) {
        const qsizetype filled = bytes.size();
        bytes.resize(filled + static_cast<qsizetype>(kChunkBytes));
        const ssize_t count = ::read(file, bytes.data() + filled, kChunkBytes);
        const QString error = count < 0 ? systemError() : QString();
        const bool interrupted = count < 0 && errno == EINTR;
        bytes.resize(filled + std::max<ssize_t>(count, 0));
        if (count == 0 || (count < 0 && !interrupted))
            return error;
        if (bytes.size() > maxBytes)
            return QStringLiteral("it is too large for a settings file");
    }
}

} // namespace

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool FileState::operator==(const FileState& other) const
{
    return device == other.device && inode == other.inode && size == other.size && time.tv_sec == other.time.tv_sec &&
           time.tv_nsec == other.time.tv_nsec;
}

FileState FileState::of(const QByteArray& path)
{
    struct stat info
    {};
    return stat(path.constData(), &info) == 0 ? stateOf(info) : FileState();
}

FileSnapshot FileSnapshot::read(const QByteArray& path, qint64 maxBytes)
{
    FileSnapshot snapshot;
    struct stat info
    {};
    if (stat(path.constData(), &info) != 0) {
        snapshot.error = isAbsent() ? QString() : systemError();
        return snapshot;
    }
    snapshot.state = stateOf(info);
    snapshot.error = kindRefusal(info, maxBytes);
    if (!snapshot.error.isEmpty())
        return snapshot;
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (file < 0) {
        snapshot.error = systemError();
        return snapshot;
    }
    if (fstat(file, &info) == 0)
        snapshot.state = stateOf(info);
    snapshot.error = readAll(file, maxBytes, snapshot.bytes);
    if (snapshot.error.isEmpty() && snapshot.bytes.size() < snapshot.state.size)
        snapshot.error = QStringLiteral("it ended before its size");
    close(file);
    return snapshot;
}

} // namespace platform
