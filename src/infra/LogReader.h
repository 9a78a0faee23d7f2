#pragma once

#include "CodePage.h"

#include <QByteArray>
#include <QString>

#include <vector>

class QFile;

// Follows a ring log (clsLog.h) that somebody else writes. look gives what has been written since the look before, the
// oldest first; the first one gives all that the ring holds. The file is opened for each look only, and a look that
// finds nothing new reads the header and one record. Nothing is ever written.
class LogReader
{
public:
    static constexpr int kMostRecords = 8192; // that many of the newest in one look; a ring of default size holds 4095

    enum class Problem { None, Missing, Unreadable, Damaged };

    struct Entry
    {
        QString stamp; // "2007/03/05 14:07:09:042"; empty when the record has none and so is damaged
        QString text;  // of the whole message, without the padding
    };

    struct Look
    {
        std::vector<Entry> entries;
        bool restarted = false; // another file than at the look before; entries are all that it holds
        bool lost = false;      // the ring was overwritten faster than it was read: lines are missing before entries
        Problem problem = Problem::None; // no entries then; the next look that succeeds goes on where this one stopped
    };

    // file: of the machine. It need not be there yet.
    LogReader(const platform::CodePage& codePage, const QString& file);

    Look look();
    QString file() const { return m_file; }

private:
    struct Ring
    {
        qint32 count = 0; // records that there is room for
        qint32 size = 0;  // bytes of one
        qint32 last = 0;  // written last, from 1; 0: none
        qint64 present = 0;

        bool isFull() const { return present >= count; }
        qint32 available() const { return last > 0 && isFull() ? count : last; }
        qint64 offset(qint32 number) const;
    };

    static Problem readRing(QFile& file, Ring& ring);
    static QByteArray readRecords(QFile& file, const Ring& ring, qint32 count);
    qint32 countNew(QFile& file, const Ring& ring, Look& look) const;
    std::vector<Entry> entriesOf(const QByteArray& records, qint32 size) const;

    platform::CodePage m_codePage;
    QString m_file;
    bool m_hasRead = false;
    Ring m_ring;             // at the look before
    QByteArray m_lastRecord; // the record that was the newest one then
};
