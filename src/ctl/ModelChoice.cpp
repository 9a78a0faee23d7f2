#include "ModelChoice.h"

#include "LastState.h"
#include "ModelCodes.h"
#include "ProgramContext.h"

#include <QFileInfo>

namespace {

CommandResult usage(const QString& line)
{
    return CommandResult::failed(ExitStatus::Usage, line);
}

CommandResult chooseLast(ModelCatalogue& catalogue, const LastState& last, ModelChoice& choice)
{
    if (last.modelString.isEmpty())
        return usage(QStringLiteral("no model was used before; name one with --model (vorlantctl models lists them)"));
    const ModelEntry entry = catalogue.entry(last.modelNo);
    if (entry.screenFile.isEmpty())
        return CommandResult::failed(
            ExitStatus::BadFile,
            QStringLiteral("LastModelNo=%1 of the settings is not in the model catalogue; name a model with --model")
                .arg(last.modelNo));
    choice = {entry, last.modelString};
    return {};
}

bool matches(const ModelEntry& entry, const QString& wanted)
{
    const bool whole = wanted.size() == modelcodes::kModelStringLength && wanted.startsWith(entry.code);
    return !entry.code.isEmpty() && (entry.code == wanted || whole);
}

} // namespace

CommandResult openCatalogue(ProgramContext& program, ModelCatalogue& catalogue)
{
    const QString path = program.settingsFile();
    const QFileInfo file(path);
    if (file.exists() && !(file.isFile() && file.isReadable()))
        return CommandResult::failed(
            ExitStatus::BadFile, QStringLiteral("%1 cannot be read as a settings file; repair or remove it").arg(path));
    catalogue.ensureBuiltIn(); // they stand for themselves where it cannot be written
    if (!catalogue.all().empty())
        return {};
    return CommandResult::failed(
        ExitStatus::BadFile,
        QStringLiteral("%1 lists no model; correct KXMaxCount in its section [KXInfos]").arg(path));
}

CommandResult chooseModel(ModelCatalogue& catalogue, const QString& wanted, const LastState& last, ModelChoice& choice)
{
    if (wanted.isEmpty())
        return chooseLast(catalogue, last, choice);
    for (const ModelEntry& entry : catalogue.all()) {
        if (!matches(entry, wanted))
            continue;
        const bool known = last.modelString.startsWith(entry.code);
        const QString plain = modelcodes::handPicked(entry.code);
        choice = {entry, wanted != entry.code ? wanted : known ? last.modelString : plain};
        return {};
    }
    return usage(
        QStringLiteral("--model: \"%1\" is not in the model catalogue; vorlantctl models lists it").arg(wanted));
}
