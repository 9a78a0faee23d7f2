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

const QString kTooLarge = QStringLiteral("it is too large for a settings file");

Result<> mayRead(const struct stat& info, qint64 maxBytes)
{
    if (S_ISDIR(info.st_mode))
        return Failure{QStringLiteral("it is a folder")};
    if (!S_ISREG(info.st_mode))
        return Failure{QStringLiteral("it is not a regular file")};
    return info.st_size > maxBytes ? Failure{kTooLarge} : Result<>();
}

// Reads to the end, at least as much as was announced.
Result<QByteArray> readAll(int file, qint64 announced, qint64 maxBytes)
{
    QByteArray bytes;
    for (;;) {
        const qsizetype filled = bytes.size();
        bytes.resize(filled + static_cast<qsizetype>(kChunkBytes));
        const ssize_t count = ::read(file, bytes.data() + filled, kChunkBytes);
        if (count < 0 && errno != EINTR)
            return Failure{systemError()};
        bytes.resize(filled + std::max<ssize_t>(count, 0));
        if (count == 0)
            break;
        if (bytes.size() > maxBytes)
            return Failure{kTooLarge};
    }
    if (bytes.size() < announced)
        return Failure{QStringLiteral("it ended before its size")};
    return bytes;
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
    struct stat info
    {};
    if (stat(path.constData(), &info) != 0)
        return {{}, isAbsent() ? Result<QByteArray>(QByteArray()) : Failure{systemError()}};
    const Result<> allowed = mayRead(info, maxBytes);
    if (!allowed.ok())
        return {stateOf(info), Failure{allowed.error()}};
    const int file = open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (file < 0)
        return {stateOf(info), Failure{systemError()}};
    fstat(file, &info);
    FileSnapshot snapshot{stateOf(info), readAll(file, info.st_size, maxBytes)};
    close(file);
    return snapshot;
}

} // namespace platform
