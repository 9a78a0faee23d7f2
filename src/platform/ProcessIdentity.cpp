#include "ProcessIdentity.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <cerrno>
#include <csignal>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace platform {

namespace {

constexpr qint64 kMostStatBytes = 4096;
constexpr size_t kMostUserBytes = 16384;

// Counted from behind the name, which may hold anything.
constexpr qsizetype kStateField = 0;
constexpr qsizetype kStartField = 19;

struct ProcessStat
{
    char state = '?';
    qint64 started = 0;
};

ProcessStat statOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.read(kMostStatBytes);
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 1).simplified().split(' ');
    return {fields.value(kStateField).isEmpty() ? '?' : fields[kStateField][0], fields.value(kStartField).toLongLong()};
}

} // namespace

ProcessIdentity ProcessIdentity::own()
{
    return {getpid(), statOf(getpid()).started};
}

bool ProcessIdentity::isRunning() const
{
    if (number <= 0 || number > INT32_MAX || (kill(static_cast<pid_t>(number), 0) != 0 && errno == ESRCH))
        return false;
    const ProcessStat now = statOf(number);
    if (now.state == 'Z' || now.state == 'X') // has ended, and nobody has asked for its status
        return false;
    return started == 0 || now.started == 0 || now.started == started;
}

QString userName()
{
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(kMostUserBytes);
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
        return QString::fromLocal8Bit(found->pw_name);
    return QString::number(geteuid());
}

} // namespace platform
