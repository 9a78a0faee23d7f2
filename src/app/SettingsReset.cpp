#include "SettingsReset.h"

#include "FileSnapshot.h"
#include "LockedFolder.h"
#include "ProfileDocument.h"
#include "ProgramContext.h"

#include <QFile>
#include <QFileInfo>

using platform::Failure;
using platform::Result;

namespace {

// Which models there are is no setting.
QByteArray withoutSettings(const QByteArray& content, const platform::CodePage& codePage)
{
    const platform::ProfileDocument before(content, codePage);
    platform::ProfileDocument after(QByteArray(), codePage);
    for (const char* section : {"KXInfos", "Language"}) {
        for (const QString& line : before.lines(QLatin1String(section)))
            after.setValue(QLatin1String(section), line.section(u'=', 0, 0), line.section(u'=', 1));
    }
    return after.toBytes();
}

} // namespace

Result<QString> resetSettings(ProgramContext& program)
{
    const QFileInfo file(program.settingsFile());
    const QByteArray path = QFile::encodeName(file.filePath());
    const Result<platform::LockedFolder> folder = platform::LockedFolder::lock(QFile::encodeName(file.path()));
    if (!folder.ok())
        return Failure{folder.error()};
    const Result<QByteArray> content =
        platform::FileSnapshot::read(path, platform::ProfileStore::kMaxFileBytes).content;
    if (!content.ok())
        return Failure{content.error()};
    const QString stamp = program.clock().now().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString copy = QStringLiteral("%1/%2-%3.ini").arg(file.path(), file.completeBaseName(), stamp);
    Result<> done = QFileInfo::exists(copy) ? Failure{QStringLiteral("%1 is there already").arg(copy)}
                                            : folder.value().replace(QFile::encodeName(copy), content.value());
    if (done.ok())
        done = folder.value().replace(path, withoutSettings(content.value(), program.machine().codePage));
    return done.ok() ? Result<QString>(copy) : Failure{done.error()};
}
