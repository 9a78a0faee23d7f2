#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

namespace platform {

namespace {

// One lock for each user and each place that the program was started from.
QString lockPath(const QString& executable, const QString& lockFolder)
{
    const QString folder =
        lockFolder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::TempLocation) : lockFolder;
    const QByteArray place = QFileInfo(executable).canonicalFilePath().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex().left(12);
    return QStringLiteral("%1/vorlant-%2-%3.lock").arg(folder).arg(getuid()).arg(QString::fromLatin1(hash));
}

} // namespace

SingleInstance::SingleInstance(const QString& executable, const QString& lockFolder)
    : m_lock(lockPath(executable, lockFolder))
{
    m_lock.setStaleLockTime(0); // a lock is stale when its process has ended, however old it is
    m_first = m_lock.tryLock();
}

} // namespace platform
