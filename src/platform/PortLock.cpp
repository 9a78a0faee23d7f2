#include "PortLock.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr off_t kMostBytes = 4096;
constexpr time_t kMakingSeconds = 2;
constexpr qsizetype kKernelNameBytes = 15;

// The first of these folders that may be written to has the locks of all serial devices.
QString lockFile(const QString& device)
{
    QString name = device.startsWith(u"/dev/") ? device.mid(5) : device;
    name.replace(u'/', u'_');
    for (const char* folder : {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp", "/tmp", "/var/tmp",
                               "/var/lock/lockdev", "/run/lock"}) {
        const QFileInfo info(QString::fromLatin1(folder));
        if (info.isDir() && info.isReadable() && info.isWritable())
            return QString::fromLatin1(folder) + QStringLiteral("/LCK..") + name;
    }
    return {};
}

// As the kernel calls it, without what does not belong into a message.
QByteArray nameOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(process));
    QByteArray name = file.open(QIODevice::ReadOnly) ? file.readLine(kMostBytes).trimmed() : QByteArray();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c <= ' ' || c > '~'; }, '?');
    return name;
}

// The number of a process that has ended may be that of another one by now.
bool isRunning(qint64 process, const QByteArray& program, const QByteArray& name)
{
    if (process > INT32_MAX || (kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH))
        return false;
    return program.isEmpty() || name.isEmpty() || program.left(kKernelNameBytes) == name;
}

int openLock(const QString& file)
{
    return open(QFile::encodeName(file).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

// One without a number may be in the making.
bool isNew(const struct stat& info)
{
    return std::abs(time(nullptr) - info.st_mtime) <= kMakingSeconds;
}

// What the file says; the file is named already.
void readLock(int file, PortLock& lock)
{
    struct stat info
    {};
    lock.state = PortLock::State::NoLock;
    if (fstat(file, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > kMostBytes)
        return;
    QByteArray bytes(kMostBytes, '\0');
    bytes.resize(std::max<ssize_t>(pread(file, bytes.data(), kMostBytes, 0), 0));
    const QList<QByteArray> lines = bytes.split('\n');
    const qint64 process = lines.value(0).trimmed().toLongLong();
    if (process <= 0) {
        lock.state = isNew(info) ? PortLock::State::NoLock : PortLock::State::Abandoned;
        return;
    }
    const QByteArray name = nameOf(process);
    const bool runs = isRunning(process, lines.value(1).trimmed(), name);
    lock.state = runs ? PortLock::State::Held : PortLock::State::Abandoned;
    lock.process = QString::number(process);
    if (runs && !name.isEmpty())
        lock.process += QStringLiteral(" (%1)").arg(QString::fromLatin1(name));
}

} // namespace

PortLock PortLock::of(const QString& device)
{
    PortLock lock;
    lock.file = lockFile(device);
    struct stat info
    {};
    if (lock.file.isEmpty() || lstat(QFile::encodeName(lock.file).constData(), &info) != 0)
        return lock;
    lock.state = State::NoLock;
    const int file = openLock(lock.file);
    if (file < 0)
        return lock;
    readLock(file, lock);
    close(file);
    return lock;
}

// Its holder, and whoever else removes it, locks the file itself, too: it is the same one until the name is gone.
void PortLock::removeAbandoned() const
{
    const int handle = openLock(file);
    if (handle < 0)
        return;
    struct stat own
    {};
    struct stat named
    {};
    PortLock now;
    readLock(handle, now);
    const QByteArray path = QFile::encodeName(file);
    const bool isSame = now.state == State::Abandoned && flock(handle, LOCK_EX | LOCK_NB) == 0 &&
                        fstat(handle, &own) == 0 && lstat(path.constData(), &named) == 0 &&
                        own.st_ino == named.st_ino && own.st_dev == named.st_dev;
    if (isSame)
        unlink(path.constData());
    close(handle);
}

} // namespace platform
