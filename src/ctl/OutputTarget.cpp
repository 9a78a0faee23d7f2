#include "OutputTarget.h"

#include <QFile>
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

} // namespace

QString writeOutput(const QByteArray& bytes, const QString& file)
{
    if (file.isEmpty())
        return writeToStandardOutput(bytes);
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit())
        return QString();
    return QStringLiteral("%1: %2; choose another place with -o").arg(file, out.errorString());
}
