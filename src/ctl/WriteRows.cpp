#include "WriteRows.h"

#include "ControllerSession.h"
#include "ItemUnits.h"
#include "Tags.h"
#include "WriteOutcomes.h"

#include <algorithm>

namespace {

std::vector<WriteRow> plannedRows(const clsKX& kx, const CommandLine& line, const std::vector<ChangeRow>& changes)
{
    const ItemUnits units(kx.data());
    std::vector<WriteRow> rows;
    for (const ChangeRow& change : changes) {
        const bool isChosen = line.sends(change.kind);
        rows.push_back({change, isChosen, SendOutcome::NotSent, isChosen ? QString() : classNotChosen(change.kind),
                        change.heldShown, units.unitOf(*kx.getDataByTag(change.tag))});
    }
    return rows;
}

QStringList chosenTags(const std::vector<WriteRow>& rows)
{
    QStringList tags;
    for (const WriteRow& row : rows) {
        if (row.isChosen)
            tags << row.change.tag;
    }
    return tags;
}

// What the controller holds of a parameter is not known when it was not read after a request that failed.
void noteReport(const clsKX& kx, const WriteReport& report, std::vector<WriteRow>& rows)
{
    const bool isAnswered = report.outcome != WriteOutcome::NoAnswer; // else nothing was sent
    for (WriteRow& row : rows) {
        const auto isThis = [&](const SentParameter& sent) { return sent.tag == row.change.tag; };
        const auto sent = std::find_if(report.parameters.begin(), report.parameters.end(), isThis);
        if (row.isChosen && sent != report.parameters.end()) {
            row.outcome = isAnswered ? sent->outcome : SendOutcome::NotSent;
            row.reason = sent->reason;
        }
        if (row.outcome == SendOutcome::NotSent && row.reason.isEmpty())
            row.reason = QStringLiteral("the write ended before it");
        const bool isKnown = row.outcome != SendOutcome::Failed || report.readBack == ReadOutcome::Complete;
        row.kept = isKnown ? changeRow(kx, *kx.getDataByTag(row.change.tag)).heldShown : QString();
    }
}

// The controller keeps the digits of its values, whatever their decimal point.
QString noteOfPoint(const std::vector<WriteRow>& rows)
{
    const bool moves = std::any_of(rows.begin(), rows.end(), [](const WriteRow& row) {
        return row.isChosen && row.change.tag == tags::kPoint && row.change.held != row.change.value;
    });
    return moves
               ? QStringLiteral("the decimal point moves in all values: 120.0 becomes 12.00 or 1200; check set values, "
                                "limits and alarm values")
               : QString();
}

CommandResult sendRows(ControllerSession& session, std::vector<WriteRow>& rows)
{
    CommandResult result = session.writeChosen(chosenTags(rows));
    noteReport(session.kx(), session.lastWrite(), rows);
    const QString failure = result.ok() ? writeFailure(rows) : QString();
    if (failure.isEmpty())
        return result;
    const QString leftOut = result.failure.isEmpty() ? QString() : QStringLiteral("; ") + result.failure;
    return CommandResult::failed(ExitStatus::Refused,
                                 QStringLiteral("%1: %2%3").arg(session.lineText(), failure, leftOut));
}

} // namespace

QString classNotChosen(ParameterClass kind)
{
    return QStringLiteral("class %1: not chosen, see --class").arg(parameterClassName(kind));
}

CommandResult writeRows(ControllerSession& session, const CommandLine& line, const std::vector<ChangeRow>& changes)
{
    std::vector<WriteRow> rows = plannedRows(session.kx(), line, changes);
    CommandResult result;
    if (rows.empty())
        result.failure = QStringLiteral("nothing to write: the controller holds these values");
    else if (chosenTags(rows).isEmpty())
        result.failure =
            QStringLiteral("nothing to write: what differs is of classes that are not chosen, see --class");
    else if (!line.dryRun)
        result = sendRows(session, rows);
    if (result.failure.isEmpty())
        result.failure = noteOfPoint(rows);
    result.output = formatWriteRows(rows, line.dryRun, line.format);
    return result;
}
