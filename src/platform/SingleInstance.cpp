#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr int kAttempts = 3;
constexpr size_t kMostDigits = 32;

// In a folder that all may write to another user may have made it first, or another name for a file of this one.
bool isOwn(int file)
{
    struct stat info
    {};
    return file >= 0 && fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == geteuid() &&
           info.st_nlink <= 1;
}

QString shortHash(const QString& text)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.toHex().left(12));
}

// One for each user and each place that the program was started from, without its ending.
QString fileOfPlace(const QString& executable, const QString& lockFolder)
{
    const QString folder =
        lockFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::TempLocation) : lockFolder;
    const QString place = shortHash(QFileInfo(executable).canonicalFilePath());
    return QStringLiteral("%1/vorlant-%2-%3").arg(folder).arg(getuid()).arg(place);
}

} // namespace

SingleInstance::SingleInstance(const QString& executable, const QString& lockFolder)
    : m_place(fileOfPlace(executable, lockFolder)), m_path(m_place + QStringLiteral(".lock"))
{
    for (int i = 0; i < kAttempts && !tryLock(); ++i)
        close(std::exchange(m_file, -1));
}

SingleInstance::~SingleInstance()
{
    if (m_file < 0)
        return;
    if (m_isFirst)
        unlink(QFile::encodeName(m_path).constData());
    close(m_file);
}

QString SingleInstance::socketFile(const QString& display) const
{
    return QStringLiteral("%1-%2.socket").arg(m_place, shortHash(display));
}

bool SingleInstance::tryLock()
{
    const int file = open(QFile::encodeName(m_path).constData(),
                          O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
    if (!isOwn(file)) {
        close(file);
        return true;
    }
    m_file = file;
    m_isFirst = flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (!m_isFirst) {
        char text[kMostDigits] = {};
        const ssize_t count = pread(m_file, text, sizeof text, 0);
        m_holder = QString::number(QByteArray(text, std::max<ssize_t>(count, 0)).split('\n').first().toLongLong());
        return true;
    }
    struct stat info
    {};
    if (fstat(m_file, &info) != 0 || info.st_nlink == 0)
        return false;
    const QByteArray process = QByteArray::number(getpid()) + '\n';
    // Without the number in it the lock holds all the same.
    if (ftruncate(m_file, 0) == 0 && pwrite(m_file, process.constData(), static_cast<size_t>(process.size()), 0) < 0)
        m_holder.clear();
    return true;
}

} // namespace platform
