#include "FileReplacement.h"

#include "FileSnapshot.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int kNameAttempts = 16;
constexpr int kMostLinks = 40;
constexpr int kNameDigits = 16;
constexpr mode_t kPrivate = 0600;
constexpr mode_t kByUmask = 0666;
constexpr mode_t kKeptBits = 01777; // no set-user-ID, no set-group-ID
constexpr char kPrefix[] = ".vorlant-save-";

QByteArray newName()
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return kPrefix + QByteArray::number(number, 16).rightJustified(kNameDigits, '0');
}

bool isTemporaryName(const QByteArray& name)
{
    const QByteArray digits = name.mid(static_cast<qsizetype>(std::strlen(kPrefix)));
    return name.startsWith(kPrefix) && digits.size() == kNameDigits &&
           std::all_of(digits.begin(), digits.end(), [](char c) { return std::strchr("0123456789abcdef", c); });
}

// Locked while it is written: a file of such a name without a lock was left by a process that has ended.
class TemporaryFile
{
public:
    TemporaryFile(int folder, mode_t mode) : m_folder(folder)
    {
        for (int i = 0; i < kNameAttempts && m_file < 0; ++i) {
            if (!create(mode) && errno != EEXIST && errno != EAGAIN)
                break;
        }
    }
    ~TemporaryFile()
    {
        if (m_file < 0)
            return;
        if (!m_isRenamed)
            unlinkat(m_folder, m_name.constData(), 0);
        close(m_file);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    int file() const { return m_file; } // -1 with errno
    bool renameTo(const QByteArray& name)
    {
        m_isRenamed = renameat(m_folder, m_name.constData(), m_folder, name.constData()) == 0;
        return m_isRenamed;
    }

private:
    // Who looks for leftovers may have come between the making and the lock: then the file is his.
    bool create(mode_t mode)
    {
        m_name = newName();
        m_file = openat(m_folder, m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (m_file < 0)
            return false;
        struct stat info
        {};
        const bool isOurs = flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        if (isOurs && fstat(m_file, &info) == 0 && info.st_nlink > 0)
            return true;
        close(m_file);
        m_file = -1;
        errno = EAGAIN;
        return false;
    }

    int m_folder;
    int m_file = -1;
    QByteArray m_name;
    bool m_isRenamed = false;
};

// The lock is held until the name is gone, see TemporaryFile::create.
void removeIfAbandoned(int folder, const char* name)
{
    const int file = openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return;
    struct stat info
    {};
    if (fstat(file, &info) == 0 && S_ISREG(info.st_mode) && flock(file, LOCK_EX | LOCK_NB) == 0)
        unlinkat(folder, name, 0);
    close(file);
}

void removeLeftovers(int folder)
{
    const int list = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* entries = list < 0 ? nullptr : fdopendir(list);
    if (entries == nullptr) {
        if (list >= 0)
            close(list);
        return;
    }
    while (const dirent* entry = readdir(entries)) {
        if (isTemporaryName(entry->d_name))
            removeIfAbandoned(folder, entry->d_name);
    }
    closedir(entries);
}

// Gives the new file the owner, group and rights of the one that it replaces: a file that changes hands by being saved
// might be lost to its owner.
Result<> applyRights(int file, const struct stat& old)
{
    struct stat now
    {};
    if (fstat(file, &now) != 0)
        return Failure{systemError()};
    const bool isSameOwner = old.st_uid == now.st_uid && old.st_gid == now.st_gid;
    if (!isSameOwner && fchown(file, old.st_uid, old.st_gid) != 0)
        return Failure{QStringLiteral("its owner and group cannot be kept: ") + systemError()};
    return fchmod(file, old.st_mode & kKeptBits) == 0 ? Result<>() : Failure{systemError()};
}

// A device or pipe cannot be replaced: that would take it away from everybody else.
Result<> writeThrough(const QByteArray& path, const QByteArray& bytes)
{
    const int file = open(path.constData(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return Failure{systemError()};
    const Result<> written = writeAll(file, bytes) ? Result<>() : Failure{systemError()};
    return close(file) == 0 || !written.ok() ? written : Failure{systemError()};
}

// As the kernel judges links and pipes in folders such as /tmp.
bool isPlanted(const QByteArray& file)
{
    struct stat own
    {};
    struct stat folder
    {};
    if (lstat(file.constData(), &own) != 0 || stat(folderOf(file).constData(), &folder) != 0)
        return false;
    const bool isShared = (folder.st_mode & S_ISVTX) != 0 && (folder.st_mode & S_IWOTH) != 0;
    return isShared && own.st_uid != geteuid() && own.st_uid != folder.st_uid;
}

// Descriptor of a folder whose files are to be replaced; -1 with errno.
int openFolder(const QByteArray& folder)
{
    const int file = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // One that may be written to but not listed.
    return file < 0 && errno == EACCES ? open(folder.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC) : file;
}

} // namespace

QByteArray folderOf(const QByteArray& path)
{
    const auto slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(std::max<qsizetype>(slash, 1));
}

Result<QByteArray> behindLinks(const QByteArray& path)
{
    char target[PATH_MAX];
    QByteArray file = path;
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t length = readlink(file.constData(), target, sizeof target);
        if (length <= 0)
            break;
        if (isPlanted(file))
            return Failure{QStringLiteral("it is a link of another user")};
        const QByteArray next(target, length);
        file = next.startsWith('/') ? next : file.left(file.lastIndexOf('/') + 1) + next;
    }
    return file;
}

bool writeAll(int file, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = write(file, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

bool mayWriteInPlace(const QByteArray& path)
{
    const Result<QByteArray> target = behindLinks(path);
    struct stat info
    {};
    if (!target.ok())
        return false;
    return stat(target.value().constData(), &info) == 0 ? S_ISREG(info.st_mode) : errno == ENOENT;
}

Result<> mayWrite(const QByteArray& path)
{
    if (faccessat(AT_FDCWD, path.constData(), W_OK, AT_EACCESS) == 0 || errno == ENOENT)
        return {};
    return Failure{errno == EACCES || errno == EROFS ? QStringLiteral("it is read-only") : systemError()};
}

Result<> replaceInFolder(int folder, const QByteArray& name, const QByteArray& bytes, Flush flush)
{
    removeLeftovers(folder);
    struct stat old
    {};
    const bool isThere = fstatat(folder, name.constData(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (isThere && !S_ISREG(old.st_mode))
        return Failure{S_ISDIR(old.st_mode) ? QStringLiteral("it is a folder")
                                            : QStringLiteral("it is not a regular file")};
    TemporaryFile temporary(folder, isThere ? kPrivate : kByUmask);
    if (temporary.file() < 0 || !writeAll(temporary.file(), bytes))
        return Failure{systemError()};
    const Result<> rights = isThere ? applyRights(temporary.file(), old) : Result<>();
    if (!rights.ok())
        return rights;
    if ((flush == Flush::ToDisk && fsync(temporary.file()) != 0) || !temporary.renameTo(name))
        return Failure{systemError()};
    if (flush == Flush::ToDisk)
        fsync(folder);
    return {};
}

Result<> writeWholeFile(const QByteArray& path, const QByteArray& bytes)
{
    struct stat info
    {};
    const bool isThere = stat(path.constData(), &info) == 0;
    const Result<QByteArray> target = behindLinks(path);
    if (!target.ok())
        return Failure{target.error()};
    if (isThere && !S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode))
        return isPlanted(target.value()) ? Failure{QStringLiteral("it is a pipe or device of another user")}
                                         : writeThrough(path, bytes);
    const Result<> allowed = mayWrite(target.value());
    if (!allowed.ok())
        return allowed;
    const int folder = openFolder(folderOf(target.value()));
    if (folder < 0)
        return Failure{systemError()};
    const QByteArray name = target.value().mid(target.value().lastIndexOf('/') + 1);
    Result<> written = replaceInFolder(folder, name, bytes, Flush::ToDisk);
    close(folder);
    return written;
}

} // namespace platform
