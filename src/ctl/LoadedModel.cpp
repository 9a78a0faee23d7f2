#include "LoadedModel.h"

#include "DefinitionFault.h"
#include "LastState.h"
#include "ProgramContext.h"

#include <QFileInfo>

LoadedModel::LoadedModel(ProgramContext& program) : m_program(program), m_kx(program.library()) {}

CommandResult LoadedModel::load(const QString& wanted)
{
    ModelCatalogue catalogue(m_program.library());
    CommandResult step = openCatalogue(m_program, catalogue);
    if (step.ok())
        step = chooseModel(catalogue, wanted, LastState::load(m_program.library()), m_model);
    if (step.ok())
        step = checkDefinition();
    return step.ok() ? loadDefinition() : step;
}

QString LoadedModel::screenFile() const
{
    return m_program.definitionFile(m_model.entry.screenFile);
}

QString LoadedModel::commFile() const
{
    return m_program.definitionFile(m_model.entry.commFile);
}

CommandResult LoadedModel::checkDefinition() const
{
    const QString fault = definitionFault(m_program.library(), m_model.entry);
    if (!fault.isEmpty())
        return CommandResult::failed(ExitStatus::BadFile, QStringLiteral("%1: %2").arg(m_model.entry.code, fault));
    const CommandResult screen = checkFile(m_model.entry.screenFile);
    return screen.ok() ? checkFile(m_model.entry.commFile) : screen;
}

// Before the load, because loading a screen file that is missing writes one that holds nothing but defaults.
CommandResult LoadedModel::checkFile(const QString& name) const
{
    const QFileInfo file(m_program.definitionFile(name));
    if (!name.isEmpty() && file.isFile() && file.isReadable())
        return {};
    const QString error = file.exists() ? QStringLiteral("cannot be read") : QStringLiteral("is missing");
    return CommandResult::failed(ExitStatus::BadFile,
                                 QStringLiteral("%1: definition file \"%2\" %3; put it into %4")
                                     .arg(m_model.entry.code, name, error, m_program.definitionFile(QString())));
}

CommandResult LoadedModel::loadDefinition()
{
    m_kx.setSpread(&m_grid);
    m_kx.Logs(m_program.errorLog(), m_program.traceLog());
    m_kx.setMaxRC(m_model.entry.number);
    m_kx.load(m_model.entry.number, &m_program.library(), m_model.modelString);
    if (!m_kx.items().empty())
        return {};
    return CommandResult::failed(ExitStatus::BadFile,
                                 QStringLiteral("%1 describes no parameters; put the definition of %2 there")
                                     .arg(screenFile(), m_model.entry.code));
}
