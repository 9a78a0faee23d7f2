#include "SetCommand.h"

#include "ChangeList.h"
#include "CommandEntry.h"
#include "ControllerSession.h"
#include "EntryOrder.h"
#include "ItemStore.h"
#include "NamedItems.h"
#include "ValueEntry.h"
#include "WriteRows.h"

namespace {

using Items = std::vector<clsData*>;

CommandResult nothingWritten(const QStringList& refused)
{
    return CommandResult::failed(ExitStatus::Refused,
                                 QStringLiteral("%1; nothing was written").arg(refused.join(u"; ")));
}

QStringList tagsOf(const QStringList& pairs)
{
    QStringList tags;
    for (const QString& pair : pairs)
        tags << pair.section(u'=', 0, 0);
    return tags;
}

// A class that was not chosen is refused before the line is opened. What is only measured is refused as such.
CommandResult checkClasses(const Items& items, const CommandLine& line)
{
    QStringList refused;
    for (const clsData* item : items) {
        if (item->Class() != ParameterClass::Measured && !line.sends(item->Class()))
            refused << QStringLiteral("%1: %2").arg(item->Key(), classNotChosen(item->Class()));
    }
    return refused.isEmpty() ? CommandResult() : nothingWritten(refused);
}

// What is named, then what interlocks and selection tables have changed besides.
std::vector<ChangeRow> rowsOf(const clsKX& kx, const Items& named)
{
    std::vector<ChangeRow> rows;
    QStringList tags;
    for (const clsData* item : named) {
        rows.push_back(changeRow(kx, *item));
        tags << item->Key();
    }
    for (const ChangeRow& row : changesOf(kx)) {
        if (!tags.contains(row.tag))
            rows.push_back(row);
    }
    return rows;
}

QStringList unfitOf(const clsKX& kx, const std::vector<ChangeRow>& rows)
{
    QStringList unfit;
    for (const ChangeRow& row : rows) {
        const clsData& item = *kx.getDataByTag(row.tag);
        if (!fitsImage(item, *kx.ColAdr().find(item.WSection())))
            unfit << QStringLiteral("%1=%2: the controller cannot hold it").arg(row.tag, row.valueShown);
    }
    return unfit;
}

// Settings that decide how others are read first, then in the order given; what a later value changes of an earlier one
// is a contradiction in the command.
QStringList enterPairs(clsKX& kx, const Items& items, const QStringList& pairs)
{
    CommandEntry entry(kx);
    QStringList refused;
    QStringList entered(pairs.size());
    for (const size_t i : entryOrder({items.begin(), items.end()})) {
        const QString& pair = pairs[static_cast<qsizetype>(i)];
        const QString error = enterValue(entry, *items[i], pair.section(u'=', 1));
        if (!error.isEmpty())
            refused << QStringLiteral("%1: %2").arg(pair, error);
        entered[static_cast<qsizetype>(i)] = items[i]->Data();
    }
    for (size_t i = 0; i < items.size() && refused.isEmpty(); ++i) {
        if (items[i]->Data() != entered[static_cast<qsizetype>(i)])
            refused << QStringLiteral("%1: a later value makes it %2; give it after that one, or leave it out")
                           .arg(pairs[static_cast<qsizetype>(i)], items[i]->VData());
    }
    return refused;
}

CommandResult enterAll(clsKX& kx, const Items& named, const QStringList& pairs, std::vector<ChangeRow>& rows)
{
    QStringList refused = enterPairs(kx, named, pairs);
    if (refused.isEmpty()) {
        rows = rowsOf(kx, named);
        refused = unfitOf(kx, rows);
    }
    return refused.isEmpty() ? CommandResult() : nothingWritten(refused);
}

} // namespace

CommandResult setParameters(ControllerSession& session, const CommandLine& line)
{
    Items named;
    std::vector<ChangeRow> rows;
    CommandResult step = session.load(line.model);
    if (step.ok() && !session.isModelOpen())
        step = findItems(session.kx(), tagsOf(line.words), named);
    if (step.ok())
        step = checkClasses(named, line);
    if (step.ok())
        step = session.open();
    if (step.ok())
        step = session.read();
    if (step.ok())
        step = findItems(session.kx(), tagsOf(line.words), named);
    if (step.ok())
        step = checkClasses(named, line);
    if (step.ok())
        step = enterAll(session.kx(), named, line.words, rows);
    return step.ok() ? writeRows(session, line, rows) : step;
}
