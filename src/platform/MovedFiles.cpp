#include "MovedFiles.h"

#include "FileReplacement.h"
#include "FileSnapshot.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace platform {

namespace {

Failure failureOf(const QString& file)
{
    return Failure{QStringLiteral("%1: %2").arg(file, systemError())};
}

Result<QByteArray> contentOf(const QByteArray& path)
{
    return FileSnapshot::read(path, std::numeric_limits<qint64>::max()).content;
}

// Into another file system: under another name first, because half a file must not bear the right one.
Result<> copyAcross(const QByteArray& source, const QByteArray& target)
{
    const Result<QByteArray> content = contentOf(source);
    if (!content.ok())
        return Failure{content.error()};
    const QByteArray whole = target + ".moving";
    const Result<> written = writeWholeFile(whole, content.value());
    if (!written.ok())
        return written;
    const bool isLinked = link(whole.constData(), target.constData()) == 0;
    const Result<> linked = isLinked || errno == EEXIST ? Result<>() : failureOf(QFile::decodeName(target));
    unlink(whole.constData());
    if (isLinked)
        unlink(source.constData());
    return linked;
}

Result<> moveFile(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return {};
    if (errno == EXDEV || errno == EINVAL)
        return copyAcross(source, target);
    return errno == EEXIST || errno == ENOENT ? Result<>() : failureOf(from);
}

} // namespace

Result<> moveFiles(const QString& from, const QString& to)
{
    const QStringList names = QDir(from).entryList(QDir::Files | QDir::Hidden);
    if (!names.isEmpty() && !QDir().mkpath(to))
        return failureOf(to);
    Result<> first;
    for (const QString& name : names) {
        const Result<> moved = moveFile(from + u'/' + name, to + u'/' + name);
        if (first.ok())
            first = moved;
    }
    rmdir(QFile::encodeName(from).constData());
    return first;
}

} // namespace platform
