#include "BackupStore.h"

#include "clsLibrary.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

constexpr qsizetype kMaxExtension = 16;
constexpr int kMaxBytes = 1 << 24; // of the values of a set, far more than any model has
const QString kUsualExtension = QStringLiteral("par");

// The extension comes from a definition file.
QString plainExtension(const QString& text)
{
    static const QRegularExpression kPlain(QStringLiteral("^[A-Za-z0-9]{1,%1}$").arg(kMaxExtension));
    return kPlain.match(text).hasMatch() ? text : kUsualExtension;
}

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

platform::Result<> BackupStore::keep(const ParameterSet& set, const QString& extension, const QString& comment) const
{
    if (!m_library.MakeDir(folder()))
        return platform::Failure{m_library.tranStr(QStringLiteral("the folder %1 cannot be made"))
                                     .arg(m_library.context().machine.paths.toMachine(folder()))};
    const QString stamp = m_library.context().machine.clock.now().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const std::vector<Backup> kept = backupsOf(set.modelString);
    if (!kept.empty() && holds(kept.back(), set))
        return {};
    const QString number = QString::number(kept.empty() ? 1 : kept.back().number + 1).rightJustified(kDigits, u'0');
    const QString name = fileStem(set.modelString) + number + u'_' + stamp + u'.' + plainExtension(extension);
    platform::Result<> saved = ParameterFile(m_library, folder() + u'\\' + name).save(set, comment);
    if (saved.ok())
        removeOld(set.modelString);
    return saved;
}

// Oldest first. The number of the name gives the order, whatever the clock said; names without one are older.
std::vector<BackupStore::Backup> BackupStore::backupsOf(const QString& modelString) const
{
    static const QRegularExpression kRest(
        QStringLiteral("^(?:([0-9]{%1,15})_)?[0-9]{8}-[0-9]{6}-[0-9]{3}\\.").arg(kDigits));
    const QString stem = fileStem(modelString);
    std::vector<Backup> backups;
    const QStringList files = m_library.context().machine.paths.filesIn(folder());
    for (const QString& file : files) {
        const auto rest = kRest.match(file.startsWith(stem) ? file.mid(stem.size()) : QString());
        if (rest.hasMatch())
            backups.push_back({rest.captured(1).toLongLong(), file});
    }
    std::stable_sort(backups.begin(), backups.end(),
                     [](const Backup& left, const Backup& right) { return left.number < right.number; });
    return backups;
}

bool BackupStore::holds(const Backup& backup, const ParameterSet& set) const
{
    platform::Machine& machine = m_library.context().machine;
    const QString file = machine.paths.toMachine(folder() + u'\\' + backup.file);
    QStringList wanted;
    for (const auto& [tag, value] : set.values)
        wanted << tag + u'=' + value;
    return machine.profiles.readSection(file, QStringLiteral("Data"), kMaxBytes) == wanted;
}

void BackupStore::removeOld(const QString& modelString) const
{
    const std::vector<Backup> backups = backupsOf(modelString);
    for (size_t i = 0; i + kKeptPerModel < backups.size(); ++i)
        m_library.context().machine.paths.removeFile(folder() + u'\\' + backups[i].file);
}
