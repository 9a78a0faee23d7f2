#pragma once

#include "ReadTransfer.h"
#include "TransferReports.h"
#include "WriteSelection.h"

#include <QHash>
#include <QStringList>

#include <vector>

// Whether chosen parameters may be written, and what became of each: their images are read before and after the
// requests. A parameter whose value at the controller is not the one that the user saw is a conflict and stays here.
// What was not edited takes the values read, edits stay.
//
// Order of calls: start, lookFirst, readBack after the requests, finish. WriteTransfer owns it; what it is given is
// kept by reference.
class ChosenCheck
{
public:
    ChosenCheck(const TransferParts& parts, ReadTransfer& read, WriteReport& report)
        : m_parts(parts), m_read(read), m_report(report)
    {}

    // Before any write: after the port was opened anew another controller may be there. False: told.
    bool isSameController();
    void start(const QStringList& tags); // each once, in the order of the definition
    QStringList lookFirst();             // those that may go out
    void readBack(const WriteSelection& selection);
    void finish(); // the report tells of every parameter, the grid shows it

private:
    using Images = std::vector<clsKXAdr*>;

    // What the user saw of an item before the controller was asked.
    struct Seen
    {
        clsData* item = nullptr;
        QString held; // empty: not known
        QString shown;
        bool isEdited = false;
    };

    SentParameter& row(const QString& tag);
    bool isAsked(const QString& tag) const;
    Images imagesOf(const QStringList& tags, bool withModel) const;
    ReadTransfer::Look look(const Images& images);
    void noteSeen(const Images& images);
    void takeUnedited();
    bool hasChanged(const Seen& seen) const;
    bool mayGoOn(const ReadReport& look);
    void sortOut(const QStringList& unread, QStringList& agreed);
    void fail(SentParameter& row, SendOutcome outcome, const QString& reason);
    void judge(SentParameter& row, const WriteSelection& selection, bool isRead);
    void mark(const SentParameter& row);

    const TransferParts& m_parts;
    ReadTransfer& m_read;
    WriteReport& m_report;
    QVector<SentParameter> m_rows;
    std::vector<Seen> m_seen;
    int m_requests = 0; // of the reads
    qint64 m_wireBytes = 0;
};
