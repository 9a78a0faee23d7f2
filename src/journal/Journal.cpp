#include "Journal.h"

#include "AppendedFile.h"
#include "FileSnapshot.h"
#include "JournalLines.h"
#include "ProgramVersion.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QUuid>

namespace {

constexpr qint64 kMostFileBytes = qint64{256} * 1024 * 1024;

QStringList journalFiles(const QString& folder)
{
    static const QRegularExpression form(QStringLiteral("\\Ajournal-\\d{4}-\\d{2}\\.jsonl\\z"));
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name).filter(form);
}

// Adds what the files hold; those that cannot be read.
QStringList readRecords(const QString& folder, JournalRecords& records)
{
    QStringList unreadable;
    for (const QString& name : folder.isEmpty() ? QStringList() : journalFiles(folder)) {
        const QString file = folder + u'/' + name;
        const platform::FileSnapshot snapshot = platform::FileSnapshot::read(QFile::encodeName(file), kMostFileBytes);
        if (snapshot.content.ok())
            records.add(snapshot.content.value());
        else
            unreadable << file;
    }
    return unreadable;
}

bool isInterrupted(const JournalRecord& record)
{
    return !record.isCompleted && (record.isTold || !record.process.isRunning());
}

} // namespace

QString Journal::folder() const
{
    const QString state = m_context.machine.folders.state();
    return state.isEmpty() ? QString() : state + QStringLiteral("/vorlant");
}

platform::Result<> Journal::append(const QByteArray& line) const
{
    if (folder().isEmpty())
        return platform::Failure{
            QStringLiteral("there is no folder for the history of writes; set HOME or XDG_STATE_HOME")};
    if (!QDir().mkpath(folder()))
        return platform::Failure{QStringLiteral("%1: %2").arg(folder(), qt_error_string())};
    const QString month = m_context.machine.clock.now().toString(QStringLiteral("yyyy-MM"));
    const QString file = QStringLiteral("%1/journal-%2.jsonl").arg(folder(), month);
    const platform::Result<> appended = platform::appendLine(QFile::encodeName(file), line);
    return appended.ok() ? appended : platform::Failure{QStringLiteral("%1: %2").arg(file, appended.error())};
}

platform::Result<QString> Journal::begin(const JournalEntry& entry) const
{
    JournalEntry begun = entry;
    begun.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    begun.begunAt = m_context.machine.clock.now();
    begun.user = platform::userName();
    begun.version = ProgramVersion::current().plain();
    const platform::Result<> appended = append(journallines::begun(begun, platform::ProcessIdentity::own()));
    return appended.ok() ? platform::Result<QString>(begun.id) : platform::Failure{appended.error()};
}

platform::Result<> Journal::complete(const QString& id, const QString& outcome,
                                     const QVector<JournalParameter>& parameters) const
{
    return append(journallines::completed(id, m_context.machine.clock.now(), outcome, parameters));
}

platform::Result<> Journal::noteInterrupted(const QString& id) const
{
    return append(journallines::interrupted(id, m_context.machine.clock.now()));
}

JournalReading Journal::read() const
{
    JournalRecords found;
    JournalReading reading;
    reading.unreadable = readRecords(folder(), found);
    reading.damagedLines = found.damagedLines();
    reading.entries.reserve(found.records().size());
    for (JournalRecord& record : found.records()) {
        record.entry.isInterrupted = isInterrupted(record);
        reading.entries.push_back(std::move(record.entry));
    }
    return reading;
}

std::vector<JournalEntry> Journal::interrupted() const
{
    JournalRecords found;
    readRecords(folder(), found);
    std::vector<JournalEntry> entries;
    for (JournalRecord& record : found.records()) {
        if (record.isTold || !isInterrupted(record))
            continue;
        record.entry.isInterrupted = true;
        entries.push_back(std::move(record.entry));
    }
    return entries;
}
