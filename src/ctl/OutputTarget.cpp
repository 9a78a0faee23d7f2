#include "OutputTarget.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace {

QString writeToStandardOutput(const QByteArray& bytes)
{
    QFile out;
    if (out.open(stdout, QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.flush())
        return QString();
    return QStringLiteral("standard output: %1; nothing more was written").arg(out.errorString());
}

// A device or pipe takes the bytes; replacing it would take it away from everybody else.
bool isDevice(const QString& file)
{
    const QFileInfo info(file);
    return info.exists() && !info.isFile() && !info.isDir();
}

QString writeThrough(const QByteArray& bytes, const QString& file)
{
    QFile out(file);
    const bool written = out.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && out.write(bytes) == bytes.size();
    return written ? QString() : out.errorString();
}

QString replace(const QByteArray& bytes, const QString& file)
{
    QSaveFile out(file);
    const bool written = out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
    return written ? QString() : out.errorString();
}

} // namespace

QString writeOutput(const QByteArray& bytes, const QString& file)
{
    if (file.isEmpty())
        return writeToStandardOutput(bytes);
    const QString trouble = isDevice(file) ? writeThrough(bytes, file) : replace(bytes, file);
    return trouble.isEmpty() ? QString() : QStringLiteral("%1: %2; choose another place with -o").arg(file, trouble);
}
