#pragma once

#include "CodePage.h"
#include "Result.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

class ProfileDocument;

// INI-syntax files ("profiles"): single values, whole sections, single writes and batches of writes.
//
// Files are named by machine paths. A parsed document is cached per file and used while the file's identity, size and
// nanosecond time are unchanged, so an outside edit is seen at the next call. Comments, order, unknown lines and line
// ends survive every write; a write that changes nothing touches no disk; a write replaces the file atomically
// (temporary file in the same folder, flush, rename) under an advisory lock, so two processes lose nothing to each
// other. ProfileEncoding says in which forms a file is read and written.
//
// The documents of the kMaxDocuments files used last are kept.
//
// A file that cannot be read whole (a folder, a pipe or device, no permission, larger than kMaxFileBytes, an error of
// the disk, too many open files) reads as if it were missing, and readable() says why. It is never written. The next
// call tries to read it again. A failure says what failed and where (machine path), ready to be logged or shown.
class ProfileStore
{
public:
    static constexpr qint64 kMaxFileBytes = qint64{64} * 1024 * 1024;
    static constexpr int kSectionBufferBytes = 32767;
    static constexpr int kMaxDocuments = 24; // a program reads about ten again and again, and any number once

    explicit ProfileStore(CodePage codePage);
    ~ProfileStore();
    ProfileStore(const ProfileStore&) = delete;
    ProfileStore& operator=(const ProfileStore&) = delete;

    // One value as a platform read with a buffer of bufferSize bytes (code page bytes, terminator included) gives it:
    // cut to bufferSize - 1 bytes, never in the middle of a double-byte character. count is the number of bytes copied.
    struct Value
    {
        QString text;
        int count = 0;
        bool found = false; // the text is the file's, not the default
    };
    Value read(const QString& file, const QString& section, const QString& key, const QString& defaultText,
               int bufferSize);

    // Whether the file could be read whole; a missing file can.
    Result<> readable(const QString& file);

    // The lines of a section in file order (comments and blank lines left out); empty when missing. Cut as a platform
    // read with a buffer of bufferSize bytes cuts them, the NULs behind each line and at the end included.
    QStringList readSection(const QString& file, const QString& section, int bufferSize = kSectionBufferBytes);

    bool hasSection(const QString& file, const QString& section);
    QStringList sections(const QString& file); // names, in no order

    // Sets one value, creating file, section and key as needed. Inside a Batch only the cached document changes.
    Result<> write(const QString& file, const QString& section, const QString& key, const QString& value);

    // The same for a value that is only the default: one that another program has stored meanwhile stays.
    Result<> writeDefault(const QString& file, const QString& section, const QString& key, const QString& value);

    // Collects all writes made while it lives into one replacement per file. Batches nest; the outermost one writes.
    // Within a batch a file is looked at once: an outside edit is merged when the batch is written.
    // What an outermost batch has collected is dropped when it is destroyed without commit().
    class Batch
    {
    public:
        explicit Batch(ProfileStore& store);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

        // Writes all changed files (outermost batch only). A file that cannot be replaced keeps its old content and its
        // pending writes are dropped. The outcome holds the errors of all files and of all writes that were refused.
        Result<> commit();

    private:
        ProfileStore& m_store;
        bool m_open = true;
    };

    // Files below this folder (machine path) are never written.
    void protect(const QString& folder) { m_protected = folder + u'/'; }

    // How many times a file has been replaced since construction (for measures and tests).
    int replacements() const { return m_replacements; }
    int documents() const { return static_cast<int>(m_entries.size()); }

private:
    struct Entry;
    struct Write;
    Entry& fresh(const QString& file);
    Entry& entryOf(const QString& file);
    void forgetOldest();
    Result<> store(const QString& file, const Write& write);
    Failure failure(Entry& entry, const QString& error) const;
    Failure refused(Entry& entry, const QString& error);
    Result<> endBatch();
    void dropBatch();
    Result<> flush(const QString& file, Entry& entry);
    Result<> replaceFile(const QString& file, Entry& entry);

    CodePage m_codePage;
    QString m_protected;
    QHash<QString, std::shared_ptr<Entry>> m_entries;
    QString m_lastFile; // asked for last, with its entry: a definition file is read key by key
    Entry* m_last = nullptr;
    int m_batchDepth = 0;
    int m_batchNumber = 0;  // of the outermost batch that is open, or was last
    QStringList m_refusals; // of writes within the batch
    int m_replacements = 0;
    quint64 m_uses = 0;
};

} // namespace platform
