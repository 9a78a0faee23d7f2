#pragma once

#include "JournalEntry.h"
#include "ProcessIdentity.h"

#include <QByteArray>
#include <QHash>

#include <vector>

class QJsonObject;

// The lines of a journal file, without line breaks: JSON in UTF-8, one object a line. Times are local, with offset and
// milliseconds.
namespace journallines {

QByteArray begun(const JournalEntry& entry, const platform::ProcessIdentity& process);
QByteArray completed(const QString& id, const QDateTime& time, const QString& outcome,
                     const QVector<JournalParameter>& parameters);
QByteArray interrupted(const QString& id, const QDateTime& time);

} // namespace journallines

// A write as the lines tell it.
struct JournalRecord
{
    JournalEntry entry;
    platform::ProcessIdentity process; // that began it
    bool isCompleted = false;
    bool isTold = false; // that it was interrupted
};

// Puts the lines of writes together, in the order in which they were appended: call add for each file, the oldest
// first. A write may begin in one file and end in the next one. What makes no sense is counted and left out.
class JournalRecords
{
public:
    void add(const QByteArray& content);

    std::vector<JournalRecord>& records() { return m_records; } // the oldest begin first
    int damagedLines() const { return m_damagedLines; }

private:
    bool addLine(const QByteArray& text);
    bool addBegun(const QString& id, const QDateTime& time, const QJsonObject& line);
    bool addCompleted(const QString& id, const QDateTime& time, const QJsonObject& line);
    bool addInterrupted(const QString& id);
    JournalRecord* find(const QString& id);
    JournalRecord& make(const QString& id, const QDateTime& time);

    std::vector<JournalRecord> m_records;
    QHash<QString, size_t> m_places; // of an id in m_records
    int m_damagedLines = 0;
};
