#pragma once

#include "Translator.h"

#include <QString>

#include <map>

// How the requests on a line have ended since the start or the last reset: a bad cable shows here before anything
// fails.
class LineStatistics
{
public:
    enum class Reply {
        Good,
        Missing, // not a byte has come
        Damaged, // check value, length or another request's
        Refused  // an exception of the controller
    };

    // milliseconds: from the request to the end of its reply or of the wait. bytes: sent and received.
    void note(Reply reply, qint64 milliseconds, qint64 bytes);
    void reset() { *this = {}; }

    int requests() const;
    int count(Reply reply) const { return m_counts[static_cast<size_t>(reply)]; }
    double errorsPerThousand() const; // of the requests; a refusal is an answer, not an error
    qint64 bytes() const { return m_bytes; }
    // Of the good replies, in milliseconds; 0 without one. share: 0 the least, 0.5 the median, 1 the most.
    qint64 responseMs(double share) const;

    // One line, in the language in use.
    QString text(const TranslateText& tran) const;

private:
    int m_counts[4] = {};
    qint64 m_bytes = 0;
    std::map<qint64, int> m_responses; // good replies by milliseconds
};
