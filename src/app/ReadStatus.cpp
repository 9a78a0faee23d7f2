#include "ReadStatus.h"

#include "clsKX.h"

#include <algorithm>

namespace {

QString filledText(const ReadStatus& status, const TranslateText& tran)
{
    if (status.offLine) // else they are a file's, or entered, or of an earlier read
        return status.defaults ? tran(QStringLiteral("default values")) : QString();
    if (status.report.requests == 0)
        return tran(QStringLiteral("nothing read: the comm file holds no read commands"));
    if (status.unread > 0)
        return (status.unread == 1 ? tran(QStringLiteral("1 parameter not read (%1)"))
                                   : tran(QStringLiteral("%1 parameters not read (%2)")).arg(status.unread))
            .arg(status.report.unreadBlocks.join(u", "));
    return tran(QStringLiteral("read at %1")).arg(status.readAt.toString(QStringLiteral("HH:mm:ss")));
}

} // namespace

QString readStatusText(const ReadStatus& status, const TranslateText& tran)
{
    if (status.activity != TransferEngine::Activity::Idle)
        return status.activity == TransferEngine::Activity::Reading ? tran(QStringLiteral("reading..."))
                                                                    : tran(QStringLiteral("writing..."));
    switch (status.state) {
    case MainState::UpToDate:
        return filledText(status, tran);
    case MainState::Confirmed:
        return tran(QStringLiteral("not read"));
    case MainState::NoConnection:
        break;
    }
    return tran(QStringLiteral("not connected"));
}

QString readStatusToolTip(const ReadStatus& status, const TranslateText& tran)
{
    const bool isGood = status.report.outcome == ReadOutcome::Complete && status.report.givenUp.isEmpty();
    if (status.activity != TransferEngine::Activity::Idle || isGood || status.report.lastFailure.isEmpty())
        return QString();
    if (status.report.givenUp.isEmpty())
        return status.report.lastFailure;
    return tran(QStringLiteral("No valid reply to:vbCrLf%1vbCrLfLast reason: %2"))
        .arg(status.report.givenUp.join(u'\n'), status.report.lastFailure);
}

int countUnread(const clsKX& kx)
{
    return static_cast<int>(
        std::count_if(kx.items().begin(), kx.items().end(), [](const auto& item) { return !item->isKnown(); }));
}
