#include "ModelsCommand.h"

#include "ModelChoice.h"
#include "ProgramContext.h"
#include "TextTable.h"

CommandResult listModels(ProgramContext& program)
{
    ModelCatalogue catalogue(program.library());
    const CommandResult opened = openCatalogue(program, catalogue);
    if (!opened.ok())
        return opened;
    TextTable table({QStringLiteral("No"), QStringLiteral("Code"), QStringLiteral("Name"),
                     QStringLiteral("Screen file"), QStringLiteral("Comm file")});
    for (const ModelEntry& entry : catalogue.all())
        table.add({QString::number(entry.number), entry.code, entry.name, entry.screenFile, entry.commFile});
    return CommandResult::done(table.text().toUtf8());
}
