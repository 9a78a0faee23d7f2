#include "PrintedChanges.h"

#include "ChangeList.h"

CommandResult printedChanges(const clsKX& kx, OutputFormat format)
{
    PrintedRows printed{{QStringLiteral("tag"), QStringLiteral("name"), QStringLiteral("block"),
                         QStringLiteral("class"), QStringLiteral("held"), QStringLiteral("new")},
                        {},
                        {}};
    for (const ChangeRow& row : changesOf(kx))
        printed.rows.append(
            {row.tag, row.name, row.block, parameterClassName(row.kind), row.heldShown, row.valueShown});
    const bool isPrinted = !printed.rows.isEmpty() || format != OutputFormat::Table;
    return CommandResult::done(isPrinted ? formatRows(printed, format) : QByteArray());
}
