#include "ProfileStore.h"

#include "LockedFolder.h"
#include "ProfileDocument.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

// What tells two states of a file apart.
struct FileState
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1; // -1: no file
    timespec time{};

    bool operator==(const FileState& other) const
    {
        return device == other.device && inode == other.inode && size == other.size &&
               time.tv_sec == other.time.tv_sec && time.tv_nsec == other.time.tv_nsec;
    }
};

struct FileCheck
{
    FileState state;
    mode_t mode = 0;
    bool isFolder = false;
    bool isOddKind = false; // a pipe or a device: opening it could wait for ever
};

FileCheck checkFile(const QByteArray& path)
{
    struct stat info
    {};
    if (stat(path.constData(), &info) != 0)
        return {};
    const bool isFolder = S_ISDIR(info.st_mode);
    return {{info.st_dev, info.st_ino, info.st_size, info.st_mtim},
            info.st_mode,
            isFolder,
            !isFolder && !S_ISREG(info.st_mode)};
}

QString unquoted(const QString& value)
{
    const bool quoted = value.size() >= 2 && (value[0] == u'"' || value[0] == u'\'') && value.back() == value[0];
    return quoted ? value.mid(1, value.size() - 2) : value;
}

// A reader takes blanks and quotation marks around a value away: a value that has such of its own gets a pair more.
QString guarded(const QString& value)
{
    const QString plain = value.trimmed();
    return plain.isEmpty() || unquoted(plain) == value ? plain : u'"' + value + u'"';
}

bool isAsciiText(const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() >= 0x80)
            return false;
    }
    return true;
}

} // namespace

struct ProfileStore::Entry
{
    struct Write
    {
        QString section;
        QString key;
        QString value;
    };

    QByteArray path;
    FileState state;
    std::unique_ptr<ProfileDocument> document;
    std::vector<Write> pending;
    int checkedInBatch = 0;
    quint64 lastUse = 0;

    void parse(const FileCheck& check, const CodePage& codePage)
    {
        QByteArray bytes;
        QFile file(QFile::decodeName(path));
        const bool readable =
            check.state.size >= 0 && check.state.size <= kMaxFileBytes && !check.isFolder && !check.isOddKind;
        if (readable && file.open(QIODevice::ReadOnly))
            bytes = file.readAll();
        document = std::make_unique<ProfileDocument>(bytes, codePage);
        state = check.state;
    }

    bool apply()
    {
        bool changed = false;
        for (const Write& write : pending)
            changed = document->setValue(write.section, write.key, write.value) || changed;
        return changed;
    }
};

ProfileStore::ProfileStore(CodePage codePage) : m_codePage(std::move(codePage)) {}

ProfileStore::~ProfileStore() = default;

ProfileStore::Entry& ProfileStore::fresh(const QString& file)
{
    auto known = m_entries.find(file);
    if (known == m_entries.end()) {
        if (m_entries.size() >= kMaxDocuments)
            forgetOldest();
        known = m_entries.insert(file, std::make_shared<Entry>());
        known.value()->path = QFile::encodeName(file);
    }
    const std::shared_ptr<Entry>& entry = *known;
    entry->lastUse = ++m_uses;
    const bool checked = m_batchDepth > 0 && entry->checkedInBatch == m_batchNumber && entry->document;
    if (checked || !entry->pending.empty())
        return *entry;
    entry->checkedInBatch = m_batchDepth > 0 ? m_batchNumber : 0;
    const FileCheck check = checkFile(entry->path);
    if (!entry->document || !(check.state == entry->state))
        entry->parse(check, m_codePage);
    return *entry;
}

// What a batch has still to write stays, however old it is.
void ProfileStore::forgetOldest()
{
    auto oldest = m_entries.end();
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        const bool isOlder = oldest == m_entries.end() || entry.value()->lastUse < oldest.value()->lastUse;
        if (entry.value()->pending.empty() && isOlder)
            oldest = entry;
    }
    if (oldest != m_entries.end())
        m_entries.erase(oldest);
}

ProfileStore::Value ProfileStore::read(const QString& file, const QString& section, const QString& key,
                                       const QString& defaultText, int bufferSize)
{
    const auto stored = fresh(file).document->value(section, key);
    const QString text = stored ? unquoted(*stored) : defaultText;
    const int room = std::max(bufferSize - 1, 0);
    if (isAsciiText(text))
        return {text.left(room), static_cast<int>(std::min<qsizetype>(text.size(), room)), stored.has_value()};
    QString cut = text;
    QByteArray bytes = m_codePage.fromText(cut);
    while (bytes.size() > room) {
        cut.chop(std::max<qsizetype>((bytes.size() - room) / 4, 1));
        bytes = m_codePage.fromText(cut);
    }
    return {cut, static_cast<int>(bytes.size()), stored.has_value()};
}

QStringList ProfileStore::readSection(const QString& file, const QString& section, int bufferSize)
{
    QStringList kept;
    qsizetype room = bufferSize - 1;
    const QStringList lines = fresh(file).document->lines(section);
    for (const QString& line : lines) {
        room -= (isAsciiText(line) ? line.size() : m_codePage.fromText(line).size()) + 1;
        if (room < 0)
            break;
        kept << line;
    }
    return kept;
}

bool ProfileStore::hasSection(const QString& file, const QString& section)
{
    return fresh(file).document->hasSection(section);
}

ProfileOutcome ProfileStore::write(const QString& file, const QString& section, const QString& key,
                                   const QString& value)
{
    const QString refusal = ProfileDocument::refusal(section, key);
    if (!refusal.isEmpty())
        return {QStringLiteral("%1: %2").arg(file, refusal)};
    Entry& entry = fresh(file);
    const QString stored = guarded(ProfileDocument::oneLine(value));
    if (!entry.document->setValue(section, key, stored))
        return {};
    entry.pending.push_back({section, key, stored});
    return m_batchDepth > 0 ? ProfileOutcome{} : flush(file, entry);
}

ProfileOutcome ProfileStore::flush(const QString& file, Entry& entry)
{
    const auto failed = [&](const QString& why) {
        entry.pending.clear();
        entry.document.reset();
        return ProfileOutcome{QStringLiteral("%1 cannot be written: %2").arg(file, why)};
    };
    // A link stays a link: its target is replaced.
    const QString canonical = QFileInfo(file).canonicalFilePath();
    const QByteArray path = QFile::encodeName(canonical.isEmpty() ? file : canonical);
    const LockedFolder folder(path.left(std::max<qsizetype>(path.lastIndexOf('/'), 1)));
    if (!folder.error().isEmpty())
        return failed(folder.error());
    const FileCheck check = checkFile(path);
    if (check.isFolder)
        return failed(QStringLiteral("it is a folder"));
    if (check.isOddKind)
        return failed(QStringLiteral("it is not a regular file"));
    if (check.state.size > kMaxFileBytes)
        return failed(QStringLiteral("it is too large for a settings file"));
    const bool exists = check.state.size >= 0;
    if (exists && (check.mode & S_IWUSR) == 0)
        return failed(QStringLiteral("it is read-only"));
    if (exists && access(path.constData(), R_OK) != 0)
        return failed(QStringLiteral("it cannot be read: ") + qt_error_string());
    if (!(check.state == entry.state)) {
        entry.parse(check, m_codePage);
        if (!entry.apply()) {
            entry.pending.clear();
            return {};
        }
    }
    const QString error = folder.replace(path, entry.document->toBytes());
    if (!error.isEmpty())
        return failed(error);
    ++m_replacements;
    entry.pending.clear();
    entry.state = checkFile(path).state;
    return {};
}

ProfileOutcome ProfileStore::endBatch()
{
    ProfileOutcome first;
    if (--m_batchDepth > 0)
        return first;
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (entry.value()->pending.empty())
            continue;
        const ProfileOutcome outcome = flush(entry.key(), *entry.value());
        if (first.ok())
            first = outcome;
    }
    return first;
}

ProfileStore::Batch::Batch(ProfileStore& store) : m_store(store)
{
    if (m_store.m_batchDepth++ == 0)
        ++m_store.m_batchNumber;
}

ProfileStore::Batch::~Batch()
{
    commit();
}

ProfileOutcome ProfileStore::Batch::commit()
{
    if (!m_open)
        return {};
    m_open = false;
    return m_store.endBatch();
}

} // namespace platform
