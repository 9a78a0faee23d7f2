#include "HistoryCommand.h"

#include "HistoryRows.h"
#include "Journal.h"
#include "ProgramContext.h"

namespace {

QStringList historyFields(const HistoryRow& row, OutputFormat format)
{
    const JournalEntry& entry = *row.entry;
    const QDateTime time = entry.begunAt.toOffsetFromUtc(entry.begunAt.offsetFromUtc());
    return {time.toString(Qt::ISODateWithMs),
            row.outcome(),
            row.tag(),
            row.name(),
            valueWithUnit(row.held(), row.unit(), format),
            valueWithUnit(row.value(), row.unit(), format),
            entry.cause,
            entry.device,
            QString::number(entry.slave),
            entry.mode,
            entry.model,
            entry.user};
}

QString leftOut(const JournalReading& reading)
{
    QStringList parts;
    if (reading.damagedLines > 0)
        parts << QStringLiteral("damaged lines left out: %1").arg(reading.damagedLines);
    for (const QString& file : reading.unreadable)
        parts << QStringLiteral("%1 cannot be read").arg(file);
    return parts.isEmpty() ? QString() : platform::visibleText(QStringLiteral("history: ") + parts.join(u"; "));
}

} // namespace

CommandResult showHistory(ProgramContext& program, const CommandLine& line)
{
    const JournalReading reading = Journal(program.context()).read();
    PrintedRows printed;
    for (const char* column :
         {"time", "outcome", "tag", "name", "old", "new", "cause", "device", "slave", "mode", "model", "user"})
        printed.columns << QString::fromLatin1(column);
    QStringList units;
    for (const HistoryRow& row : historyRows(reading.entries, HistoryOrder::OldestFirst)) {
        printed.rows.append(historyFields(row, line.format));
        units << row.unit();
    }
    addUnits(printed, units, line.format);
    return {ExitStatus::Done, formatRows(printed, line.format), leftOut(reading)};
}
