#include "BackupsCommand.h"

#include "BackupStore.h"
#include "ModelCodes.h"
#include "OutputFormat.h"
#include "ProgramContext.h"

namespace {

// wanted: a whole model string, or the code that it begins with; empty for any.
bool isOfModel(const BackupEntry& backup, const QString& wanted)
{
    const bool isWhole = wanted.size() >= modelcodes::kModelStringLength;
    return isWhole ? backup.model == wanted : backup.model.startsWith(wanted);
}

} // namespace

CommandResult listBackups(ProgramContext& program, const CommandLine& line)
{
    const BackupStore store(program.library());
    const platform::PathMap& paths = program.context().machine.paths;
    const BackupList list = store.list();
    PrintedRows printed{
        {QStringLiteral("time"), QStringLiteral("model"), QStringLiteral("cause"), QStringLiteral("file")}, {}, {}};
    for (const BackupEntry& backup : list.entries) {
        if (isOfModel(backup, line.words.value(0)))
            printed.rows.append({backup.timeText(), backup.model, backup.cause, paths.toMachine(backup.file)});
    }
    CommandResult result = CommandResult::done(formatRows(printed, line.format));
    if (list.unreadable > 0)
        result.failure = platform::visibleText(QStringLiteral("%1: files that cannot be read as backups: %2")
                                                   .arg(paths.toMachine(store.folder()))
                                                   .arg(list.unreadable));
    return result;
}
