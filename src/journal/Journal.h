#pragma once

#include "Context.h"
#include "JournalEntry.h"
#include "Result.h"

#include <QStringList>

#include <vector>

// The writes that the files of the journal hold.
struct JournalReading
{
    std::vector<JournalEntry> entries; // the oldest first
    int damagedLines = 0;              // that were left out
    QStringList unreadable;            // files, as machine paths
};

// The journal of all writes to controllers, one file for each month: "journal-2026-11.jsonl" in folder(), which is made
// when it is missing. Programs that run at the same time share it. Lines are added, each flushed to the disk, and never
// changed.
//
// Order of calls: begin before the first byte is sent, complete with the id that it gave when all is over. A write that
// was begun and never completed was interrupted: a program asks for these when it starts.
class Journal
{
public:
    explicit Journal(Context& context) : m_context(context) {}

    // Adds that a write begins, with time, user, version and process of its own; the id. Failures here and below name
    // the file and the reason: the write is to be refused then.
    platform::Result<QString> begin(const JournalEntry& entry) const;
    // Adds what became of it. Of parameters that begin knew only the outcome counts.
    platform::Result<> complete(const QString& id, const QString& outcome,
                                const QVector<JournalParameter>& parameters) const;

    QString folder() const; // a machine path; empty when the machine has none for it
    JournalReading read() const;

    // Those that were begun and not completed, whose process is no more, and that were not noted; the oldest first.
    std::vector<JournalEntry> interrupted() const;
    // Adds that a person was told, so that it is told once.
    platform::Result<> noteInterrupted(const QString& id) const;

private:
    platform::Result<> append(const QByteArray& line) const;

    Context& m_context;
};
