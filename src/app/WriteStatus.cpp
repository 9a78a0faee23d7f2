#include "WriteStatus.h"

#include "ItemDisplay.h"
#include "ItemUnits.h"
#include "clsKX.h"

#include <QStringList>

namespace {

// Names parameters for a person.
class Names
{
public:
    Names(const clsKX& kx, const TranslateText& tran) : m_kx(kx), m_tran(tran), m_units(kx.data()) {}

    // "Set values: Set value 1 [VQSV1]".
    QString of(const QString& tag) const { return of(QStringList(tag)); }

    // Each block once: "Set values: Set value 1 [VQSV1], Set value 2 [VQSV2], Input: Unit [SWQCF]".
    QString of(const QStringList& tags) const
    {
        QStringList names;
        QString before;
        for (const QString& tag : tags) {
            const clsData* item = m_kx.getDataByTag(tag);
            const clsBlock* block = item == nullptr ? nullptr : m_kx.getBlockByNo(item->BlockNo());
            const QString title = block == nullptr ? QString() : m_tran(block->m_sName);
            const QString name = item == nullptr ? tag : nameWithTag(*item, m_tran);
            names << (title.isEmpty() || title == before ? name : title + QStringLiteral(": ") + name);
            before = title;
        }
        return names.join(QStringLiteral(", "));
    }

    // A stored value as its cell shows it, with its unit.
    QString shown(const QString& tag, const QString& stored) const
    {
        const clsData* item = m_kx.getDataByTag(tag);
        if (item == nullptr)
            return stored;
        return m_units.shown(*item, translatedValue(*item, m_kx.data().lookup, stored, m_tran));
    }

private:
    const clsKX& m_kx;
    const TranslateText& m_tran;
    ItemUnits m_units;
};

} // namespace

QString writeStatusText(const WriteReport& report, const QDateTime& endedAt, const TranslateText& tran)
{
    QStringList parts;
    if (report.written > 0)
        parts << tran(QStringLiteral("%1 written %2"))
                     .arg(report.written)
                     .arg(endedAt.toString(QStringLiteral("HH:mm:ss")));
    if (!report.notAccepted.isEmpty())
        parts << tran(QStringLiteral("%1 not accepted")).arg(report.notAccepted.size());
    if (!report.conflicts.isEmpty())
        parts << tran(QStringLiteral("%1 in conflict")).arg(report.conflicts.size());
    if (!report.failed.isEmpty())
        parts << (report.failed.size() == 1 ? tran(QStringLiteral("1 request failed"))
                                            : tran(QStringLiteral("%1 requests failed")).arg(report.failed.size()));
    if (!report.outsideLimits.isEmpty())
        parts << tran(QStringLiteral("%1 outside their limits")).arg(report.outsideLimits.size());
    if (!report.skipped.isEmpty())
        parts << tran(QStringLiteral("%1 without a value")).arg(report.skipped.size());
    return parts.join(QStringLiteral(", "));
}

QString writeStatusDetails(const WriteReport& report, const clsKX& kx, const TranslateText& tran)
{
    const Names names(kx, tran);
    QStringList lines;
    for (const NotAccepted& parameter : report.notAccepted)
        lines << tran(QStringLiteral("%1: written %2, the controller keeps %3"))
                     .arg(names.of(parameter.tag), names.shown(parameter.tag, parameter.sent),
                          names.shown(parameter.tag, parameter.kept));
    for (const SentParameter& parameter : report.parameters) {
        if (parameter.outcome == SendOutcome::Conflict)
            lines << tran(QStringLiteral(
                              "%1: not written, because the controller held %2 when it was changed and holds %3 now"))
                         .arg(names.of(parameter.tag), names.shown(parameter.tag, parameter.before),
                              names.shown(parameter.tag, parameter.held));
    }
    for (const FailedRequest& request : report.failed)
        lines << tran(QStringLiteral("Request failed: %1"))
                     .arg(request.tags.isEmpty()
                              ? request.text()
                              : QStringLiteral("%1 (%2)").arg(names.of(request.tags), request.reason));
    for (const QString& tag : report.outsideLimits)
        lines << tran(QStringLiteral("%1 is outside its limits or no choice: it is not written until it is corrected"))
                     .arg(names.of(tag));
    for (const QString& tag : report.skipped)
        lines << tran(QStringLiteral("%1 has no value: the controller keeps its own")).arg(names.of(tag));
    if (!report.unsent.isEmpty())
        lines << tran(QStringLiteral("Not known to be in the controller, still changed: %1"))
                     .arg(names.of(report.unsent));
    return lines.join(u'\n');
}
