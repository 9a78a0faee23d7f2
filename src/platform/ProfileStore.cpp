#include "ProfileStore.h"

#include "FileSnapshot.h"
#include "LockedFolder.h"
#include "ProfileDocument.h"

#include <QFile>

namespace platform {

namespace {

QString unquoted(const QString& value)
{
    const bool quoted = value.size() >= 2 && (value[0] == u'"' || value[0] == u'\'') && value.back() == value[0];
    return quoted ? value.mid(1, value.size() - 2) : value;
}

// A reader takes blanks and quotation marks around a value away: a value that has such of its own gets a pair more.
QString guarded(const QString& value)
{
    const QString plain = ProfileDocument::trimmed(value).toString();
    return plain.isEmpty() || unquoted(plain) == value ? plain : u'"' + value + u'"';
}

// A default as a platform read gives it.
QString withoutEndBlanks(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace

struct ProfileStore::Write
{
    QString section;
    QString key;
    QString value;
    bool isDefault = false;
};

struct ProfileStore::Entry
{
    QByteArray path;
    FileState state;
    std::unique_ptr<ProfileDocument> document;
    QString unreadable; // why the document is not what the file holds
    QString lastFailure;
    std::vector<Write> pending;
    int checkedInBatch = 0;
    quint64 lastUse = 0;

    void parse(const CodePage& codePage)
    {
        const FileSnapshot file = FileSnapshot::read(path, kMaxFileBytes);
        document = std::make_unique<ProfileDocument>(file.content.ok() ? file.content.value() : QByteArray(), codePage);
        state = file.state;
        const QString before = std::exchange(unreadable, file.content.error());
        if (!document->isWhole())
            unreadable = QStringLiteral("it holds damaged UTF-16 text");
        if (!before.isEmpty() && unreadable.isEmpty())
            lastFailure.clear();
    }

    bool apply(const Write& write) const
    {
        const auto stored = write.isDefault ? document->value(write.section, write.key) : std::nullopt;
        if (stored && !unquoted(*stored).isEmpty())
            return false;
        return document->setValue(write.section, write.key, write.value);
    }

    bool applyPending() const
    {
        bool changed = false;
        for (const Write& write : pending)
            changed = apply(write) || changed;
        return changed;
    }

    void forget()
    {
        pending.clear();
        document.reset();
    }
};

ProfileStore::ProfileStore(CodePage codePage) : m_codePage(std::move(codePage)) {}

ProfileStore::~ProfileStore() = default;

ProfileStore::Entry& ProfileStore::entryOf(const QString& file)
{
    if (m_last != nullptr && file == m_lastFile)
        return *m_last;
    auto known = m_entries.find(file);
    if (known == m_entries.end()) {
        if (m_entries.size() >= kMaxDocuments)
            forgetOldest();
        known = m_entries.insert(file, std::make_shared<Entry>());
        known.value()->path = QFile::encodeName(file);
    }
    m_lastFile = file;
    m_last = known->get();
    return *m_last;
}

ProfileStore::Entry& ProfileStore::fresh(const QString& file)
{
    Entry& entry = entryOf(file);
    entry.lastUse = ++m_uses;
    const bool checked = m_batchDepth > 0 && entry.checkedInBatch == m_batchNumber && entry.document;
    if (checked || !entry.pending.empty())
        return entry;
    entry.checkedInBatch = m_batchDepth > 0 ? m_batchNumber : 0;
    if (!entry.document || !entry.unreadable.isEmpty() || !(FileState::of(entry.path) == entry.state))
        entry.parse(m_codePage);
    return entry;
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
    const QString text = stored ? unquoted(*stored) : withoutEndBlanks(defaultText);
    const int room = std::max(bufferSize - 1, 0);
    if (isAsciiText(text))
        return {text.left(room), static_cast<int>(std::min<qsizetype>(text.size(), room)), stored.has_value()};
    const QString cut = m_codePage.fitting(text, room);
    return {cut, static_cast<int>(m_codePage.fromText(cut).size()), stored.has_value()};
}

Result<> ProfileStore::readable(const QString& file)
{
    Entry& entry = fresh(file);
    if (entry.unreadable.isEmpty())
        return {};
    return failure(entry, QStringLiteral("%1 cannot be read: %2").arg(file, entry.unreadable));
}

QStringList ProfileStore::readSection(const QString& file, const QString& section, int bufferSize)
{
    const QStringList lines = fresh(file).document->lines(section);
    std::vector<qsizetype> sizes;
    qsizetype total = 0;
    for (const QString& line : lines) {
        sizes.push_back((isAsciiText(line) ? line.size() : m_codePage.fromText(line).size()) + 1);
        total += sizes.back();
    }
    // A list that is too long ends at two NULs before the end of the buffer, in the middle of a line.
    qsizetype room = total < bufferSize ? total : bufferSize - 2;
    QStringList kept;
    for (qsizetype i = 0; i < lines.size() && room > 0; ++i) {
        kept << (sizes[i] <= room + 1 ? lines[i] : m_codePage.fitting(lines[i], room));
        room -= sizes[i];
    }
    return kept;
}

bool ProfileStore::hasSection(const QString& file, const QString& section)
{
    return fresh(file).document->hasSection(section);
}

QStringList ProfileStore::sections(const QString& file)
{
    return fresh(file).document->sections();
}

Result<> ProfileStore::write(const QString& file, const QString& section, const QString& key, const QString& value)
{
    return store(file, {section, key, value, false});
}

Result<> ProfileStore::writeDefault(const QString& file, const QString& section, const QString& key,
                                    const QString& value)
{
    return store(file, {section, key, value, true});
}

Result<> ProfileStore::store(const QString& file, const Write& write)
{
    Entry& entry = fresh(file);
    const Result<> allowed = ProfileDocument::canStore(write.section, write.key);
    if (!allowed.ok())
        return refused(entry, QStringLiteral("%1: %2").arg(file, allowed.error()));
    if (!m_protected.isEmpty() && file.startsWith(m_protected))
        return refused(entry, QStringLiteral("%1 cannot be written: it belongs to the installed program").arg(file));
    if (!entry.unreadable.isEmpty())
        return refused(entry, QStringLiteral("%1 cannot be read: %2").arg(file, entry.unreadable));
    Write stored = write;
    stored.value = guarded(ProfileDocument::oneLine(write.value));
    if (!entry.apply(stored))
        return {};
    entry.pending.push_back(stored);
    return m_batchDepth > 0 ? Result<>() : flush(file, entry);
}

Failure ProfileStore::failure(Entry& entry, const QString& error) const
{
    const bool isRepeated = entry.lastFailure == error;
    entry.lastFailure = error;
    return {error, isRepeated};
}

Failure ProfileStore::refused(Entry& entry, const QString& error)
{
    if (m_batchDepth > 0 && !m_refusals.contains(error))
        m_refusals << error;
    return failure(entry, error);
}

Result<> ProfileStore::flush(const QString& file, Entry& entry)
{
    const Result<> replaced = replaceFile(file, entry);
    if (replaced.ok()) {
        entry.pending.clear();
        entry.lastFailure.clear();
        return {};
    }
    entry.forget();
    return failure(entry, QStringLiteral("%1 cannot be written: %2").arg(file, replaced.error()));
}

Result<> ProfileStore::replaceFile(const QString& file, Entry& entry)
{
    // A link stays a link: its target is replaced.
    const Result<QByteArray> path = behindLinks(QFile::encodeName(file));
    if (!path.ok())
        return Failure{path.error()};
    const Result<LockedFolder> folder = LockedFolder::lock(folderOf(path.value()));
    if (!folder.ok())
        return Failure{folder.error()};
    const FileState now = FileState::of(entry.path);
    const Result<> allowed = now.exists() ? mayWrite(path.value()) : Result<>();
    if (!allowed.ok())
        return allowed;
    if (!(now == entry.state)) {
        entry.parse(m_codePage);
        if (!entry.unreadable.isEmpty())
            return Failure{QStringLiteral("it cannot be read: ") + entry.unreadable};
        if (!entry.applyPending())
            return {};
    }
    Result<> replaced = folder.value().replace(path.value(), entry.document->toBytes());
    if (!replaced.ok())
        return replaced;
    ++m_replacements;
    entry.state = FileState::of(entry.path);
    return {};
}

Result<> ProfileStore::endBatch()
{
    if (--m_batchDepth > 0)
        return {};
    QStringList errors = std::exchange(m_refusals, {});
    bool isRepeated = true; // the refusals were reported to whoever wrote
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (entry.value()->pending.empty())
            continue;
        const Result<> outcome = flush(entry.key(), *entry.value());
        if (outcome.ok())
            continue;
        errors << outcome.error();
        isRepeated = isRepeated && outcome.isRepeated();
    }
    return Failure{errors.join(QStringLiteral("; ")), isRepeated};
}

void ProfileStore::dropBatch()
{
    if (--m_batchDepth > 0)
        return;
    m_refusals.clear();
    for (const std::shared_ptr<Entry>& entry : std::as_const(m_entries)) {
        if (!entry->pending.empty())
            entry->forget();
    }
}

ProfileStore::Batch::Batch(ProfileStore& store) : m_store(store)
{
    if (m_store.m_batchDepth++ == 0)
        ++m_store.m_batchNumber;
}

ProfileStore::Batch::~Batch()
{
    if (m_open)
        m_store.dropBatch();
}

Result<> ProfileStore::Batch::commit()
{
    if (!m_open)
        return {};
    m_open = false;
    return m_store.endBatch();
}

} // namespace platform
