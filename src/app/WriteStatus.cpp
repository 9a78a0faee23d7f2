#include "WriteStatus.h"

#include <QStringList>

QString writeStatusText(const WriteReport& report, const TranslateText& tran)
{
    QStringList parts;
    if (!report.notAccepted.isEmpty())
        parts << tran(QStringLiteral("%1 not accepted")).arg(report.notAccepted.size());
    if (!report.failed.isEmpty())
        parts << tran(QStringLiteral("%1 not sent")).arg(report.failed.size());
    if (!report.outsideLimits.isEmpty())
        parts << tran(QStringLiteral("%1 outside their limits")).arg(report.outsideLimits.size());
    if (!report.skipped.isEmpty())
        parts << tran(QStringLiteral("%1 without a value")).arg(report.skipped.size());
    return parts.join(QStringLiteral(", "));
}

QString writeStatusDetails(const WriteReport& report, const TranslateText& tran)
{
    QStringList lines;
    for (const NotAccepted& parameter : report.notAccepted)
        lines << tran(QStringLiteral("%1: sent %2, the controller keeps %3"))
                     .arg(parameter.tag, parameter.sent, parameter.kept);
    for (const QString& request : report.failed)
        lines << tran(QStringLiteral("Not sent: %1")).arg(request);
    for (const QString& tag : report.outsideLimits)
        lines << tran(QStringLiteral("%1 is outside its limits or no choice: it is not sent until it is corrected"))
                     .arg(tag);
    for (const QString& tag : report.skipped)
        lines << tran(QStringLiteral("%1 has no value: the controller keeps its own")).arg(tag);
    if (!report.unsent.isEmpty())
        lines << tran(QStringLiteral("Not known to be in the controller, still changed: %1"))
                     .arg(report.unsent.join(QStringLiteral(", ")));
    return lines.join(u'\n');
}
