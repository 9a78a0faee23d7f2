#include "OutputTarget.h"

#include "FileReplacement.h"

#include <QFile>

#include <cstdio>

namespace {

platform::Result<> writeToStandardOutput(const QByteArray& bytes)
{
    QFile out;
    if (out.open(stdout, QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.flush())
        return {};
    return platform::Failure{QStringLiteral("standard output: %1; nothing more was written").arg(out.errorString())};
}

} // namespace

platform::Result<> writeOutput(const QByteArray& bytes, const QString& file)
{
    if (file.isEmpty())
        return writeToStandardOutput(bytes);
    const platform::Result<> written = platform::writeWholeFile(QFile::encodeName(file), bytes);
    if (written.ok())
        return written;
    return platform::Failure{QStringLiteral("%1: %2; choose another place with -o").arg(file, written.error())};
}
