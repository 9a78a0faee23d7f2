#include "OutputTarget.h"

#include "FileReplacement.h"

#include <QFile>

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
    const platform::Result<> written = platform::writeWholeFile(QFile::encodeName(file), bytes);
    return written.ok() ? QString() : QStringLiteral("%1: %2; choose another place with -o").arg(file, written.error());
}
