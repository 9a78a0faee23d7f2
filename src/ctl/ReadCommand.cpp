#include "ReadCommand.h"

#include "ProgramContext.h"

#include <QFileInfo>

namespace {

CommandResult failed(ExitStatus status, const QString& line)
{
    return CommandResult::failed(status, line.simplified());
}

} // namespace

ReadCommand::ReadCommand(ProgramContext& program, const CommandLine& line, ProgressView& progress)
    : m_program(program), m_line(line), m_progress(progress), m_controlLink(program, line), m_kx(program.library())
{
    m_program.context().messages = &m_messages;
}

ReadCommand::~ReadCommand()
{
    m_program.context().messages = nullptr;
}

CommandResult ReadCommand::run()
{
    ModelCatalogue catalogue(m_program.library());
    CommandResult step = openCatalogue(m_program, catalogue);
    if (step.ok())
        step = chooseModel(catalogue, m_line.model, m_controlLink.last(), m_model);
    if (step.ok())
        step = checkDefinition();
    if (step.ok())
        step = m_controlLink.open();
    if (step.ok())
        step = loadModel();
    if (!step.ok())
        return step;
    transfer();
    return result();
}

void ReadCommand::interrupt()
{
    m_interrupted = true;
    if (m_engine != nullptr)
        m_engine->abort();
}

CommandResult ReadCommand::checkDefinition() const
{
    const CommandResult screen = checkFile(m_model.entry.screenFile);
    return screen.ok() ? checkFile(m_model.entry.commFile) : screen;
}

// Before the load, because loading a screen file that is missing writes one that holds nothing but defaults.
CommandResult ReadCommand::checkFile(const QString& name) const
{
    const QString path = m_program.definitionFile(name);
    const QFileInfo file(path);
    if (!name.isEmpty() && file.isFile() && file.isReadable())
        return {};
    const QString trouble = file.exists() ? QStringLiteral("cannot be read") : QStringLiteral("is missing");
    return failed(ExitStatus::BadFile,
                  QStringLiteral("%1: definition file \"%2\" %3; put it into %4")
                      .arg(m_model.entry.code, name, trouble, m_program.definitionFile(QString())));
}

CommandResult ReadCommand::loadModel()
{
    m_kx.setSpread(&m_grid);
    m_kx.Logs(&m_program.errorLog(), &m_program.traceLog());
    m_kx.setMaxRC(m_model.entry.number);
    m_kx.load(m_model.entry.number, &m_program.library(), m_model.modelString);
    if (!m_kx.items().empty())
        return {};
    return failed(ExitStatus::BadFile,
                  QStringLiteral("%1 describes no parameters; put the definition of %2 there")
                      .arg(m_program.definitionFile(m_model.entry.screenFile), m_model.entry.code));
}

void ReadCommand::transfer()
{
    ControlShell shell(m_model.modelString, m_controlLink.slaveAddress(), m_controlLink.transmissionMode());
    m_engine = std::make_unique<TransferEngine>(TransferEngine::Parts{
        m_kx, m_controlLink.link(), m_program.settings(), m_program.traceLog(), m_messages, m_progress, shell});
    connect(m_engine.get(), &TransferEngine::attemptFailed, this, &ReadCommand::onAttemptFailed);
    m_engine->getDataFromKX(nullptr);
}

void ReadCommand::onAttemptFailed(const QString& entry, int attempt, int maximum, const QString& reason)
{
    if (attempt < maximum)
        return;
    m_lostRequest = QStringLiteral("%1: %2, %3 times").arg(entry, reason).arg(maximum);
    m_engine->abort();
}

CommandResult ReadCommand::result() const
{
    const ReadReport& report = m_engine->lastRead();
    if (m_interrupted)
        return failed(ExitStatus::NoAnswer, QStringLiteral("interrupted; nothing was read"));
    if (report.outcome == ReadOutcome::WrongModel)
        return wrongModel();
    if (report.outcome != ReadOutcome::Complete)
        return noAnswer();
    if (m_kx.ColAdr().count() == 0)
        return failed(ExitStatus::BadFile, QStringLiteral("%1 names nothing to read; mend the file")
                                               .arg(m_program.definitionFile(m_model.entry.screenFile)));
    if (report.requests == 0 || !report.givenUp.isEmpty())
        return failed(ExitStatus::BadFile,
                      QStringLiteral("%1 holds read commands that make no request: %2; mend the file")
                          .arg(m_program.definitionFile(m_model.entry.commFile),
                               report.requests == 0 ? QStringLiteral("all") : report.givenUp.join(u", ")));
    const QStringList unread = unreadSections();
    if (!unread.isEmpty())
        return failed(ExitStatus::BadFile,
                      QStringLiteral("%1 holds no complete read command for [%2]; mend the file")
                          .arg(m_program.definitionFile(m_model.entry.commFile), unread.join(u"], [")));
    return CommandResult::done(formatParameters(parameterRows(m_kx), m_line.format));
}

// Sections that parameters name but that made no request: their values are not the controller's.
QStringList ReadCommand::unreadSections() const
{
    QStringList sections;
    for (int i = 0; i < m_kx.ColAdr().count(); ++i) {
        if (!m_kx.ColAdr().at(i).isFilled())
            sections << m_kx.ColAdr().at(i).Section();
    }
    return sections;
}

CommandResult ReadCommand::noAnswer() const
{
    if (!m_lostRequest.isEmpty())
        return failed(ExitStatus::NoAnswer,
                      QStringLiteral("%1: no sound answer to %2; check cable, speed, mode and slave")
                          .arg(m_controlLink.text(), m_lostRequest));
    return failed(ExitStatus::NoAnswer, QStringLiteral("%1: %2; check the adapter and try again")
                                            .arg(m_controlLink.text(), m_engine->lastRead().lastFailure));
}

CommandResult ReadCommand::wrongModel() const
{
    const QString answered = m_engine->lastRead().answeredModel.trimmed();
    return failed(ExitStatus::WrongModel, QStringLiteral("%1: the controller is %2, not %3; repeat with --model %2")
                                              .arg(m_controlLink.text(), answered, m_model.modelString));
}
