#pragma once

#include "Journal.h"
#include "TransferReports.h"

class ControllerState;
class clsKX;

// Enters a write in the journal: before its first frame what is to change, at its end what became of it. Both are kept
// by reference.
class WriteJournal
{
public:
    WriteJournal(const clsKX& kx, const ControllerState& controller);

    // cause: what is written, for a person.
    platform::Result<> begin(const QString& cause, const QString& device, const QVector<SentParameter>& parameters);
    platform::Result<> complete(const WriteReport& report); // nothing, when none has begun

private:
    void chooseTags(const QVector<SentParameter>& parameters);
    QVector<JournalParameter> entriesOf(const WriteReport& report) const;

    const clsKX& m_kx;
    const ControllerState& m_controller;
    Journal m_journal;
    QString m_id; // of the write that runs
    QStringList m_tags;
};
