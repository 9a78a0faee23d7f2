#include "ReadCommand.h"

#include "ControllerSession.h"
#include "NamedItems.h"
#include "SetFile.h"

namespace {

CommandResult saveAsFile(ProgramContext& program, ControllerSession& session, const CommandLine& line)
{
    return SetFile(program, line.outputFile).save(session.kx());
}

} // namespace

CommandResult readParameters(ProgramContext& program, ControllerSession& session, const CommandLine& line)
{
    CommandResult step = session.load(line.model);
    if (step.ok())
        step = session.open();
    if (step.ok())
        step = session.read();
    if (!step.ok())
        return step;
    if (line.asParameterFile)
        return saveAsFile(program, session, line);
    return CommandResult::done(formatParameters(parameterRows(session.kx()), line.format));
}

CommandResult getParameters(ControllerSession& session, const CommandLine& line)
{
    std::vector<clsData*> items;
    CommandResult step = session.load(line.model);
    if (step.ok() && !session.isModelOpen())
        step = findItems(session.kx(), line.words, items);
    if (step.ok())
        step = session.open();
    if (step.ok())
        step = session.read();
    if (step.ok())
        step = findItems(session.kx(), line.words, items);
    return step.ok() ? CommandResult::done(formatItems(session.kx(), items, line.format)) : step;
}
