#include "NamedPipe.h"

#include "FileSnapshot.h"

#include <QFile>
#include <QSocketNotifier>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

NamedPipe::NamedPipe(QObject* parent) : QObject(parent) {}

// What has taken the pipe's place meanwhile stays.
NamedPipe::~NamedPipe()
{
    m_notifier.reset();
    struct stat now = {};
    if (m_fd >= 0 && lstat(m_path.constData(), &now) == 0 && now.st_dev == m_device && now.st_ino == m_node)
        unlink(m_path.constData());
    if (m_fd >= 0)
        close(m_fd);
}

Result<> NamedPipe::open(const QString& path)
{
    m_path = QFile::encodeName(path);
    if (mkfifo(m_path.constData(), S_IRUSR | S_IWUSR) != 0)
        return Failure{systemError()};
    // Open for writing too: else it is at its end whenever a writer goes.
    m_fd = ::open(m_path.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW);
    struct stat made = {};
    if (m_fd < 0 || fstat(m_fd, &made) != 0) {
        const QString error = systemError();
        unlink(m_path.constData());
        return Failure{error};
    }
    m_device = made.st_dev;
    m_node = made.st_ino;
    m_notifier = std::make_unique<QSocketNotifier>(m_fd, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &NamedPipe::onReadable);
    return {};
}

void NamedPipe::onReadable()
{
    char bytes[1024];
    const ssize_t count = read(m_fd, bytes, sizeof bytes);
    for (ssize_t i = 0; i < count; ++i) {
        if (bytes[i] == '\n')
            sendLine();
        else if (m_line.size() < kMaxLine)
            m_line += bytes[i];
    }
}

void NamedPipe::sendLine()
{
    const QString line = QString::fromUtf8(std::exchange(m_line, QByteArray()));
    if (!line.isEmpty())
        Q_EMIT received(line);
}

} // namespace platform
