#include "FileCommands.h"

#include "ChangeList.h"
#include "ControllerSession.h"
#include "LoadedModel.h"
#include "OutputFormat.h"
#include "SetComparison.h"
#include "SetFile.h"
#include "WriteRows.h"

namespace {

// The file decides the model: a set fits no other.
CommandResult ofFile(const SetFile& file, const CommandResult& loaded)
{
    if (loaded.status != ExitStatus::Usage)
        return loaded;
    return CommandResult::failed(
        ExitStatus::WrongModel,
        QStringLiteral(
            "%1: the file is of model \"%2\", which is not in the model catalogue; vorlantctl models lists it")
            .arg(file.name(), file.modelString()));
}

} // namespace

CommandResult showFile(ProgramContext& program, const CommandLine& line)
{
    SetFile file(program, line.words.first());
    LoadedModel model(program);
    CommandResult step = file.open(line.model);
    if (step.ok())
        step = ofFile(file, model.load(file.modelString()));
    if (step.ok())
        step = file.show(model.kx());
    return step.ok() ? CommandResult::done(formatParameters(parameterRows(model.kx()), line.format)) : step;
}

CommandResult writeFile(ProgramContext& program, ControllerSession& session, const CommandLine& line)
{
    SetFile file(program, line.words.first());
    CommandResult step = file.open(line.model);
    if (step.ok())
        step = ofFile(file, session.load(file.modelString()));
    if (step.ok())
        step = session.open();
    if (step.ok())
        step = session.read();
    if (step.ok())
        step = file.replaceWritten(session.kx());
    return step.ok() ? writeRows(session, line, changesOf(session.kx())) : step;
}

CommandResult compareFiles(ProgramContext& program, const CommandLine& line)
{
    SetFile first(program, line.words[0]);
    SetFile second(program, line.words[1]);
    LoadedModel model(program);
    std::vector<ParameterRow> rows;
    CommandResult step = first.open(line.model);
    if (step.ok())
        step = second.open(line.model);
    if (step.ok())
        step = ofFile(first, model.load(first.modelString()));
    if (step.ok())
        step = first.show(model.kx());
    if (step.ok()) {
        rows = comparedRows(model.kx());
        step = second.show(model.kx());
    }
    return step.ok() ? compareRows(rows, comparedRows(model.kx()), {QStringLiteral("first"), QStringLiteral("second")},
                                   {first.name(), second.name()}, line.format)
                     : step;
}

CommandResult compareWithController(ProgramContext& program, ControllerSession& session, const CommandLine& line)
{
    SetFile file(program, line.words.first());
    std::vector<ParameterRow> rows;
    CommandResult step = file.open(line.model);
    if (step.ok())
        step = ofFile(file, session.load(file.modelString()));
    if (step.ok())
        step = file.show(session.kx());
    if (step.ok()) {
        rows = comparedRows(session.kx());
        step = session.open();
    }
    if (step.ok())
        step = session.read();
    return step.ok() ? compareRows(rows, comparedRows(session.kx()),
                                   {QStringLiteral("file"), QStringLiteral("controller")}, {}, line.format)
                     : step;
}
