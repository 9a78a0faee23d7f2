#include "LogReader.h"

#include "clsLog.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr qint32 kLargestRecord = 65536;

struct Record
{
    QByteArray stamp; // empty: none
    QByteArray body;
};

Record split(const QByteArray& record)
{
    const QByteArray stamp = record.left(clsLog::kStampBytes);
    if (!stamp.startsWith('[') || !stamp.endsWith(']') || !record.endsWith("\r\n"))
        return {QByteArray(), record};
    return {stamp.mid(1, stamp.size() - 2), record.mid(stamp.size(), record.size() - clsLog::kFrameBytes)};
}

qsizetype blanksBehind(const QByteArray& body)
{
    const auto end = std::find_if(body.crbegin(), body.crend(), [](char c) { return c != ' '; });
    return std::distance(body.crbegin(), end);
}

qsizetype bytesOfFirst(const platform::CodePage& codePage, const QByteArray& body)
{
    const QString text = codePage.toText(body);
    return codePage.fromText(text.left(!text.isEmpty() && text.front().isHighSurrogate() ? 2 : 1)).size();
}

// Whether the next record goes on with the message of this one: the stamp is the same and no room was left, or less
// than the next character needs. Messages begin with a tag in brackets, so what does is a new one, although it was
// written within the same millisecond.
bool isContinued(const platform::CodePage& codePage, const Record& record, const Record& next)
{
    if (record.stamp.isEmpty() || record.stamp != next.stamp || next.body.startsWith('(') || next.body.startsWith('['))
        return false;
    const qsizetype room = blanksBehind(record.body);
    return room == 0 || (room < record.body.size() && room < bytesOfFirst(codePage, next.body));
}

QByteArray withoutPadding(QByteArray body)
{
    while (body.endsWith(' '))
        body.chop(1);
    return body;
}

} // namespace

qint64 LogReader::Ring::offset(qint32 number) const
{
    return clsLog::kHeaderBytes + static_cast<qint64>(number - 1) * size;
}

LogReader::LogReader(const platform::CodePage& codePage, const QString& file) : m_codePage(codePage), m_file(file) {}

LogReader::Look LogReader::look()
{
    Look look;
    // What is no plain file is not opened: a pipe would wait for a writer.
    const QFileInfo info(m_file);
    QFile file(m_file);
    if (!info.exists())
        look.problem = Problem::Missing;
    else if (!info.isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        look.problem = Problem::Unreadable;
    Ring ring;
    if (look.problem == Problem::None)
        look.problem = readRing(file, ring);
    if (look.problem != Problem::None)
        return look;
    qint32 count = countNew(file, ring, look);
    look.lost = look.lost || (m_hasRead && count > kMostRecords);
    count = std::min(count, kMostRecords);
    const QByteArray records = readRecords(file, ring, count);
    if (records.size() != static_cast<qint64>(count) * ring.size) {
        look.problem = Problem::Damaged;
        return look;
    }
    look.entries = entriesOf(records, ring.size);
    if (count > 0 || look.restarted)
        m_lastRecord = records.right(ring.size);
    m_ring = ring;
    m_hasRead = true;
    return look;
}

LogReader::Problem LogReader::readRing(QFile& file, Ring& ring)
{
    const QByteArray header = file.read(clsLog::kHeaderBytes);
    if (header.isEmpty() && file.size() == 0)
        return Problem::Missing; // made, but nothing written yet
    const auto stored = clsLog::headerOf(header);
    if (!stored)
        return Problem::Damaged;
    ring.count = stored->count;
    ring.size = stored->size;
    ring.last = stored->last;
    if (ring.count <= 0 || ring.size <= clsLog::kFrameBytes || ring.size > kLargestRecord)
        return Problem::Damaged;
    ring.present = std::min<qint64>((file.size() - clsLog::kHeaderBytes) / ring.size, ring.count);
    return ring.last < 0 || ring.last > ring.present ? Problem::Damaged : Problem::None;
}

// The header does not tell how often the ring went round. The record that was the newest one does: while it is there
// untouched, what was written behind it is all that is new.
qint32 LogReader::countNew(QFile& file, const Ring& ring, Look& look) const
{
    const bool sameLayout = ring.count == m_ring.count && ring.size == m_ring.size;
    if (!m_hasRead || (sameLayout && m_ring.last == 0))
        return ring.available();
    if (sameLayout && m_ring.last <= ring.present && file.seek(ring.offset(m_ring.last)) &&
        file.read(ring.size) == m_lastRecord)
        return ring.last >= m_ring.last ? ring.last - m_ring.last : ring.last - m_ring.last + ring.count;
    look.lost = sameLayout && ring.isFull();
    look.restarted = !look.lost;
    return ring.available();
}

// The newest records, the oldest of them first.
QByteArray LogReader::readRecords(QFile& file, const Ring& ring, qint32 count)
{
    const qint32 fromStart = std::min(count, ring.last);
    const qint32 fromEnd = count - fromStart;
    QByteArray bytes;
    if (fromEnd > 0 && file.seek(ring.offset(ring.count - fromEnd + 1)))
        bytes = file.read(static_cast<qint64>(fromEnd) * ring.size);
    if (fromStart > 0 && file.seek(ring.offset(ring.last - fromStart + 1)))
        bytes += file.read(static_cast<qint64>(fromStart) * ring.size);
    return bytes;
}

std::vector<LogReader::Entry> LogReader::entriesOf(const QByteArray& records, qint32 size) const
{
    std::vector<Entry> entries;
    QByteArray message;
    for (qsizetype at = 0; at < records.size(); at += size) {
        const Record record = split(records.mid(at, size));
        const qsizetype following = at + size;
        const bool goesOn =
            following < records.size() && isContinued(m_codePage, record, split(records.mid(following, size)));
        message += goesOn ? withoutPadding(record.body) : record.body;
        if (goesOn)
            continue;
        entries.push_back({QString::fromLatin1(record.stamp), m_codePage.toText(withoutPadding(message))});
        message.clear();
    }
    return entries;
}
