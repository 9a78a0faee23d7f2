#include "BackupStore.h"

#include "clsLibrary.h"

#include <QStringList>

namespace {

// The model string is what a controller answered: only what can stand in a file name is taken of it.
QString fileStem(const QString& modelString)
{
    QString stem;
    for (const QChar c : modelString) {
        const bool isPlain = c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-');
        stem += isPlain ? c : QChar(u'_');
    }
    return stem + u'_';
}

} // namespace

QString BackupStore::folder() const
{
    return m_library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Backup");
}

QString BackupStore::keep(const ParameterSet& set, const QString& extension) const
{
    if (!m_library.MakeDir(folder()))
        return m_library.tranStr(QStringLiteral("the folder %1 cannot be made"))
            .arg(m_library.context().machine.paths.toMachine(folder()));
    const QString stamp = m_library.context().machine.clock.now().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString name =
        fileStem(set.modelString) + stamp + u'.' + (extension.isEmpty() ? QStringLiteral("par") : extension);
    const QString error = ParameterFile(m_library, folder() + u'\\' + name).save(set);
    if (error.isEmpty())
        removeOld(set.modelString);
    return error;
}

// Names begin with the model and go on with the time: in name order the oldest comes first.
void BackupStore::removeOld(const QString& modelString) const
{
    const platform::PathMap& paths = m_library.context().machine.paths;
    const QString stem = fileStem(modelString);
    QStringList own;
    const QStringList files = paths.filesIn(folder());
    for (const QString& file : files) {
        if (file.startsWith(stem))
            own << file;
    }
    for (qsizetype i = 0; i < own.size() - kKeptPerModel; ++i)
        paths.removeFile(folder() + u'\\' + own[i]);
}
