#include "SetCommand.h"

#include "CommandEntry.h"
#include "Comparison.h"
#include "ControllerSession.h"
#include "EntryOrder.h"
#include "ItemStore.h"
#include "NamedItems.h"
#include "PrintedChanges.h"
#include "ValueEntry.h"
#include "WrittenItems.h"

#include <QHash>

#include <algorithm>

namespace {

using Items = std::vector<clsData*>;

QStringList tagsOf(const QStringList& pairs)
{
    QStringList tags;
    for (const QString& pair : pairs)
        tags << pair.section(u'=', 0, 0);
    return tags;
}

QHash<const clsData*, QString> storedValues(const clsKX& kx)
{
    QHash<const clsData*, QString> values;
    for (const auto& item : kx.items())
        values.insert(item.get(), item->Data());
    return values;
}

// What interlocks and selection tables have changed besides, to be written with the rest.
void addFollowers(clsKX& kx, const QHash<const clsData*, QString>& before, Items& items)
{
    for (const auto& item : kx.items()) {
        const bool isNamed = std::find(items.begin(), items.end(), item.get()) != items.end();
        if (!isNamed && item->Data() != before.value(item.get()) && isWritten(kx.data(), *item))
            items.push_back(item.get());
    }
}

QStringList storeAll(clsKX& kx, const Items& items)
{
    QStringList refused;
    for (const clsData* item : items) {
        if (!storeInImage(*item, *kx.ColAdr().find(item->WSection())))
            refused << QStringLiteral("%1=%2: the controller cannot hold it").arg(item->Key(), item->VData());
    }
    return refused;
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

CommandResult enterAll(clsKX& kx, Items& items, const QStringList& pairs)
{
    const QHash<const clsData*, QString> before = storedValues(kx);
    QStringList refused = enterPairs(kx, items, pairs);
    if (refused.isEmpty()) {
        addFollowers(kx, before, items);
        refused = storeAll(kx, items);
    }
    if (refused.isEmpty())
        return {};
    return CommandResult::failed(ExitStatus::Refused,
                                 QStringLiteral("%1; nothing was written").arg(refused.join(u"; ")));
}

// What the items are meant to hold, as stored and as shown.
QVector<QPair<QString, QString>> valuesOf(const Items& items)
{
    QVector<QPair<QString, QString>> values;
    for (const clsData* item : items)
        values.append({item->Data(), item->VData()});
    return values;
}

CommandResult compareWithReadBack(const ControllerSession& session, const Items& items,
                                  const QVector<QPair<QString, QString>>& sent)
{
    QStringList notAccepted;
    for (size_t i = 0; i < items.size(); ++i) {
        const clsData& item = *items[i];
        const auto& [stored, shown] = sent[static_cast<qsizetype>(i)];
        const bool same = item.Data() == heldText(item, stored) || isSameValue(item.Data(), stored);
        if (!item.isKnown() || !same)
            notAccepted << QStringLiteral("%1 (sent %2, kept %3)").arg(item.Key(), shown, item.VData());
    }
    if (notAccepted.isEmpty())
        return {};
    return CommandResult::failed(
        ExitStatus::Refused, QStringLiteral("%1: the controller did not accept %2; see what its manual asks for first")
                                 .arg(session.lineText(), notAccepted.join(u", ")));
}

// The read-back shows whether a request was refused or the line is gone.
CommandResult writeAndReadBack(ControllerSession& session, const Items& items)
{
    const QVector<QPair<QString, QString>> sent = valuesOf(items);
    QStringList tags;
    for (const clsData* item : items)
        tags << item->Key();
    const CommandResult written = session.writeChosen(tags);
    if (written.status != ExitStatus::Done && written.status != ExitStatus::Refused)
        return written;
    const CommandResult readBack = session.read();
    if (!readBack.ok())
        return readBack;
    return written.ok() ? compareWithReadBack(session, items, sent) : written;
}

} // namespace

CommandResult setParameters(ControllerSession& session, const CommandLine& line)
{
    Items items; // those that are named, then those that they change besides
    CommandResult step = session.load(line.model);
    if (step.ok())
        step = findItems(session.kx(), tagsOf(line.words), items);
    if (step.ok())
        step = session.open();
    if (step.ok())
        step = session.read();
    if (step.ok())
        step = enterAll(session.kx(), items, line.words);
    if (step.ok() && line.dryRun)
        return printedChanges(session.kx(), line.format);
    if (step.ok())
        step = writeAndReadBack(session, items);
    if (!step.ok())
        return step;
    items.resize(static_cast<size_t>(line.words.size()));
    return CommandResult::done(formatItems(session.kx(), items, line.format));
}
