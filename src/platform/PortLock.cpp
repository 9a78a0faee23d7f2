#include "PortLock.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr off_t kMostBytes = 4096;
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
    if (!S_ISREG(info.st_mode) || info.st_size > kMostBytes)
        return lock;
    const int file = open(QFile::encodeName(lock.file).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return lock;
    QByteArray bytes(kMostBytes, '\0');
    bytes.resize(std::max<ssize_t>(read(file, bytes.data(), kMostBytes), 0));
    close(file);
    const QList<QByteArray> lines = bytes.split('\n');
    const qint64 process = lines.value(0).trimmed().toLongLong();
    if (process <= 0)
        return lock;
    const QByteArray name = nameOf(process);
    const bool runs = isRunning(process, lines.value(1).trimmed(), name);
    lock.state = runs ? State::Held : State::Abandoned;
    lock.process = QString::number(process);
    if (runs && !name.isEmpty())
        lock.process += QStringLiteral(" (%1)").arg(QString::fromLatin1(name));
    return lock;
}

} // namespace platform
