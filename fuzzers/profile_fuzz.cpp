// Does a settings file keep what it holds when values are written into it, and does it hold what was written?
// Input: the bytes of a file, and one write a line, "section|key|value". The first byte chooses single writes or a
// batch; the bytes 01, 02 and 03 in a write stand for the characters that end lines and texts.

#include "FuzzInput.h"
#include "ProfileDocument.h"
#include "ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using platform::CodePage;
using platform::ProfileDocument;
using platform::ProfileStore;

namespace {

constexpr size_t kMaxWrites = 12;
constexpr int kShortBuffer = 16;

struct Write
{
    QString section;
    QString key;
    QString value;
    bool isRefused() const { return !ProfileDocument::canStore(section, key).ok(); }
};

const CodePage& codePage()
{
    static const CodePage page;
    return page;
}

std::vector<Write> writesOf(const QByteArray& text)
{
    std::vector<Write> writes;
    for (const QByteArray& line : text.split('\n')) {
        QString plain = QString::fromUtf8(line);
        plain.replace(u'\1', u'\r').replace(u'\2', u'\n').replace(u'\3', QChar(0));
        const QStringList fields = plain.split(u'|');
        if (writes.size() < kMaxWrites)
            writes.push_back({fields.value(0), fields.value(1), fields.value(2)});
    }
    return writes;
}

// Whether a text survives both encodings that a file can have.
bool isStorable(const QString& text)
{
    return codePage().toText(codePage().fromText(text)) == text && QString::fromUtf8(text.toUtf8()) == text;
}

bool isStorableWrite(const Write& write)
{
    return isStorable(write.section) && isStorable(write.key) && isStorable(write.value);
}

// The value as it reads back from a file. Nothing but blanks is no value.
QString asRead(const QString& value)
{
    QString text = value;
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ').replace(u'\r', u' ');
    text.remove(QChar(0));
    return ProfileDocument::trimmed(text).isEmpty() ? QString() : text;
}

// The lines of a file, as texts without their ends.
QStringList linesOf(const QByteArray& bytes)
{
    platform::ProfileEncoding encoding(codePage());
    const QByteArray plain = encoding.opened(bytes).replace("\r\n", "\n").replace('\r', '\n');
    QStringList lines;
    for (const QByteArray& line : plain.split('\n'))
        lines << encoding.decode(line);
    if (plain.isEmpty() || plain.endsWith('\n'))
        lines.removeLast();
    return lines;
}

// The same lines, but for one that was replaced, one that was added, or a section added with its first line.
bool differInOneEntry(const QStringList& before, const QStringList& after)
{
    const auto shared = std::min(before.size(), after.size());
    qsizetype head = 0;
    while (head < shared && before[head] == after[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shared - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    const auto added = after.size() - before.size();
    return added >= 0 && added <= 2 && head + tail >= before.size() - (added == 0 ? 1 : 0);
}

void checkWrite(ProfileDocument& document, const Write& write)
{
    const QByteArray before = document.toBytes();
    const bool changed = document.setValue(write.section, write.key, write.value);
    const QByteArray after = document.toBytes();
    require(changed || before == after, "a write that changes nothing leaves the bytes");
    require(differInOneEntry(linesOf(before), linesOf(after)), "a write leaves the other lines",
            QString::fromLatin1(before.toPercentEncoding(" []=") + " -> " + after.toPercentEncoding(" []=")));
    require(document.value(write.section, write.key) == ProfileDocument::trimmed(asRead(write.value)).toString(),
            "the document holds what was written", write.key);

    ProfileDocument again(after, codePage());
    require(again.toBytes() == after, "what was written parses to the same");
    if (isStorableWrite(write))
        require(again.value(write.section, write.key) == document.value(write.section, write.key),
                "what was written reads back", write.key);
    if (changed && isStorableWrite(write))
        require(!again.setValue(write.section, write.key, write.value), "the same write again changes nothing");
}

void checkDocument(const QByteArray& bytes, const std::vector<Write>& writes)
{
    ProfileDocument document(bytes, codePage());
    require(linesOf(document.toBytes()) == linesOf(bytes), "an unchanged file keeps its lines");
    bool storable = true;
    for (const Write& write : writes) {
        if (write.isRefused())
            continue;
        checkWrite(document, write);
        storable = storable && isStorableWrite(write);
    }
    const ProfileDocument again(document.toBytes(), codePage());
    for (const Write& write : writes) {
        if (storable)
            require(again.lines(write.section) == document.lines(write.section), "sections read back as they stand",
                    write.section);
    }
}

// A file whose characters cannot all be read is not written.
bool isWhole(const QByteArray& bytes)
{
    return ProfileDocument(bytes, codePage()).isWhole();
}

// A scratch file with its store.
class StoredFile
{
public:
    explicit StoredFile(const QByteArray& bytes) : path(m_folder.filePath(QStringLiteral("file.ini")))
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the scratch folder takes files");
    }
    QByteArray bytes() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

private:
    QTemporaryDir m_folder;

public:
    const QString path;
    ProfileStore store{codePage()};
};

void checkReads(ProfileStore& store, const QString& path, const Write& write)
{
    const auto whole = store.read(path, write.section, write.key, {}, ProfileStore::kSectionBufferBytes);
    const auto cut = store.read(path, write.section, write.key, {}, kShortBuffer);
    require(cut.count < kShortBuffer && codePage().fromText(cut.text).size() == cut.count,
            "a short buffer takes what it has room for");
    require(whole.text.startsWith(cut.text), "a short read is the beginning of a long one");
    require(whole.found == store.read(path, write.section, write.key, QStringLiteral("x"), kShortBuffer).found,
            "the default does not decide what is found");
}

bool isSameKey(const Write& left, const Write& right)
{
    const auto nameOf = [](const QString& text) {
        return platform::ProfileName{ProfileDocument::trimmed(text).toString()};
    };
    return nameOf(left.section) == nameOf(right.section) && nameOf(left.key) == nameOf(right.key);
}

// The last write to each key is what the file holds.
void checkFile(const StoredFile& stored, const std::vector<Write>& writes)
{
    ProfileStore fresh(codePage());
    for (size_t i = 0; i < writes.size(); ++i) {
        checkReads(fresh, stored.path, writes[i]);
        const bool isLast = std::none_of(writes.begin() + static_cast<std::ptrdiff_t>(i) + 1, writes.end(),
                                         [&](const Write& later) { return isSameKey(writes[i], later); });
        if (!isLast || writes[i].isRefused() || !std::all_of(writes.begin(), writes.end(), isStorableWrite))
            continue;
        const auto value =
            fresh.read(stored.path, writes[i].section, writes[i].key, {}, ProfileStore::kSectionBufferBytes);
        require(value.found && value.text == asRead(writes[i].value), "a file gives back what was written into it",
                value.text);
    }
    require(stored.files().size() == 1, "nothing is left beside the file");
}

void checkStore(const QByteArray& bytes, const std::vector<Write>& writes, bool inBatch)
{
    StoredFile stored(bytes);
    std::unique_ptr<ProfileStore::Batch> batch;
    if (inBatch)
        batch = std::make_unique<ProfileStore::Batch>(stored.store);
    for (const Write& write : writes) {
        const int replacements = stored.store.replacements();
        const QByteArray before = stored.bytes();
        const auto outcome = stored.store.write(stored.path, write.section, write.key, write.value);
        require(outcome.ok() != write.isRefused(), "what can be stored is stored, the rest is refused",
                outcome.error());
        require(stored.store.replacements() > replacements || stored.bytes() == before,
                "a file changes by replacement");
        require(!inBatch || stored.bytes() == bytes, "a batch keeps its writes until it is committed");
    }
    const bool isAnyRefused = std::any_of(writes.begin(), writes.end(), [](const Write& w) { return w.isRefused(); });
    if (batch)
        require(batch->commit().ok() != isAnyRefused, "a batch goes out, and tells of what was refused");
    checkFile(stored, writes);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    makeRepeatable();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const bool inBatch = size > 0 && data[0] == 'b';
    const std::vector<QByteArray> parts =
        partsOf(data + std::min<size_t>(size, 1), size - std::min<size_t>(size, 1), 2);
    const std::vector<Write> writes = writesOf(parts[1]);
    if (!isWhole(parts[0])) {
        StoredFile stored(parts[0]);
        require(!stored.store.write(stored.path, QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1")).ok() &&
                    stored.bytes() == parts[0],
                "a damaged file is left as it is");
        return 0;
    }
    checkDocument(parts[0], writes);
    checkStore(parts[0], writes, inBatch);
    return 0;
}
