#include "BackupStore.h"

#include "FileLocations.h"
#include "clsLibrary.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <map>

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
    return stem;
}

} // namespace

QString BackupStore::folder() const
{
    return backupFolder(m_library.context().machine);
}

platform::Result<> BackupStore::keep(const ParameterSet& set, const QString& extension, const QString& comment) const
{
    if (!m_library.MakeDir(folder()))
        return platform::Failure{m_library.tranStr(QStringLiteral("the folder %1 cannot be created"))
                                     .arg(m_library.context().machine.paths.toMachine(folder()))};
    const QString stamp = m_library.context().machine.clock.now().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const std::vector<Backup> kept = backupsOf(set.modelString);
    if (!kept.empty() && holds(kept.back(), set))
        return {};
    const QString number = QString::number(kept.empty() ? 1 : kept.back().number + 1).rightJustified(kDigits, u'0');
    const QString name = fileStem(set.modelString) + u'_' + number + u'_' + stamp + u'.' + plainExtension(extension);
    platform::Result<> saved = ParameterFile(m_library, folder() + u'\\' + name).save(set, comment);
    if (saved.ok())
        removeOld(set.modelString);
    return saved;
}

// Oldest first. The number of the name gives the order, whatever the clock said; names without one are older.
std::vector<BackupStore::Backup> BackupStore::all() const
{
    static const QRegularExpression kName(
        QStringLiteral("^(.*?)_(?:([0-9]{%1,15})_)?([0-9]{8}-[0-9]{6}-[0-9]{3})\\.").arg(kDigits));
    std::vector<Backup> backups;
    const QStringList files = m_library.context().machine.paths.filesIn(folder());
    for (const QString& file : files) {
        const auto name = kName.match(file);
        if (name.hasMatch())
            backups.push_back({name.captured(1), name.captured(2).toLongLong(), name.captured(3), file});
    }
    std::stable_sort(backups.begin(), backups.end(),
                     [](const Backup& left, const Backup& right) { return left.number < right.number; });
    return backups;
}

std::vector<BackupStore::Backup> BackupStore::backupsOf(const QString& modelString) const
{
    std::vector<Backup> backups = all();
    const QString stem = fileStem(modelString);
    std::erase_if(backups, [&stem](const Backup& backup) { return backup.stem != stem; });
    return backups;
}

// backups: oldest first. Of the models' newest ones that with the latest stamp is next.
std::vector<BackupStore::Backup> BackupStore::newestFirst(const std::vector<Backup>& backups)
{
    std::map<QString, std::vector<Backup>> models;
    for (const Backup& backup : backups)
        models[backup.stem].push_back(backup);
    std::vector<Backup> ordered;
    while (!models.empty()) {
        const auto next = std::max_element(models.begin(), models.end(), [](const auto& left, const auto& right) {
            return left.second.back().stamp < right.second.back().stamp;
        });
        ordered.push_back(next->second.back());
        next->second.pop_back();
        if (next->second.empty())
            models.erase(next);
    }
    return ordered;
}

// Names stand for models of like strings too: the file tells which one it is.
BackupList BackupStore::list(const QString& modelString) const
{
    BackupList list;
    for (const Backup& backup : newestFirst(modelString.isEmpty() ? all() : backupsOf(modelString))) {
        const QString file = folder() + u'\\' + backup.file;
        const platform::Result<ParameterFileInfo> info = ParameterFile(m_library, file).info();
        if (!info.ok() || info.value().modelString.isEmpty())
            ++list.unreadable;
        else if (modelString.isEmpty() || info.value().modelString == modelString)
            list.entries.push_back({file, info.value().savedAt, info.value().modelString, info.value().comment});
    }
    return list;
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
