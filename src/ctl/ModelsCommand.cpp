#include "ModelsCommand.h"

#include "ModelCatalogue.h"
#include "TextTable.h"

CommandResult listModels(clsLibrary& library)
{
    ModelCatalogue catalogue(library);
    catalogue.ensureBuiltIn();
    TextTable table({QStringLiteral("No"), QStringLiteral("Code"), QStringLiteral("Name"),
                     QStringLiteral("Screen file"), QStringLiteral("Comm file")});
    for (const ModelEntry& entry : catalogue.all())
        table.add({QString::number(entry.number), entry.code, entry.name, entry.screenFile, entry.commFile});
    return CommandResult::done(table.text().toUtf8());
}
