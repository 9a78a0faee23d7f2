#include "ReadStatus.h"

#include "clsKX.h"

#include <algorithm>

namespace {

QString filledText(const ReadStatus& status)
{
    if (status.offLine)
        return QStringLiteral("default values");
    if (status.report.requests == 0)
        return QStringLiteral("nothing read: the comm file holds no read commands");
    if (status.unread > 0)
        return QStringLiteral("%1 parameters not read (%2)").arg(status.unread).arg(status.report.givenUp.join(u", "));
    return QStringLiteral("read at %1").arg(status.readAt.toString(QStringLiteral("HH:mm:ss")));
}

} // namespace

QString readStatusText(const ReadStatus& status)
{
    if (status.busy)
        return QStringLiteral("reading...");
    switch (status.state) {
    case MainState::UpToDate:
        return filledText(status);
    case MainState::Confirmed:
        return QStringLiteral("not read");
    case MainState::NoConnection:
        break;
    }
    return QStringLiteral("not connected");
}

QString readStatusToolTip(const ReadStatus& status)
{
    if (status.busy || status.report.lastFailure.isEmpty())
        return QString();
    if (status.report.givenUp.isEmpty())
        return status.report.lastFailure;
    return QStringLiteral("No sound answer to:\n%1\nLast reason: %2")
        .arg(status.report.givenUp.join(u'\n'), status.report.lastFailure);
}

int countUnread(const clsKX& kx)
{
    return static_cast<int>(
        std::count_if(kx.items().begin(), kx.items().end(), [](const auto& item) { return !item->isKnown(); }));
}
