#include "LineStatistics.h"

#include <QStringList>

#include <algorithm>
#include <numeric>

namespace {

constexpr qint64 kMostResponseMs = 60000; // longer ones count as this: so many places at most
constexpr double kPerThousand = 1000;

} // namespace

void LineStatistics::note(Reply reply, qint64 milliseconds, qint64 bytes)
{
    ++m_counts[static_cast<size_t>(reply)];
    m_bytes += bytes;
    if (reply == Reply::Good)
        ++m_responses[std::clamp<qint64>(milliseconds, 0, kMostResponseMs)];
}

int LineStatistics::requests() const
{
    return std::accumulate(std::begin(m_counts), std::end(m_counts), 0);
}

double LineStatistics::errorsPerThousand() const
{
    const int errors = count(Reply::Missing) + count(Reply::Damaged);
    return requests() == 0 ? 0 : errors * kPerThousand / requests();
}

qint64 LineStatistics::responseMs(double share) const
{
    const int place = static_cast<int>(share * (count(Reply::Good) - 1));
    int seen = 0;
    for (const auto& [milliseconds, times] : m_responses) {
        seen += times;
        if (seen > place)
            return milliseconds;
    }
    return 0;
}

QString LineStatistics::text(const TranslateText& tran) const
{
    const QStringList parts{
        tran(QStringLiteral("requests: %1, good: %2, without a reply: %3, damaged: %4, refused: %5"))
            .arg(requests())
            .arg(count(Reply::Good))
            .arg(count(Reply::Missing))
            .arg(count(Reply::Damaged))
            .arg(count(Reply::Refused)),
        tran(QStringLiteral("errors per 1,000: %1")).arg(errorsPerThousand(), 0, 'f', 1),
        tran(QStringLiteral("%1 bytes")).arg(m_bytes),
        tran(QStringLiteral("reply after %1 / %2 / %3 ms (least, median, most)"))
            .arg(responseMs(0))
            .arg(responseMs(0.5)) // NOLINT(readability-magic-numbers): half of them are faster
            .arg(responseMs(1))};
    return parts.join(QStringLiteral("; "));
}
