#include "BackupsCommand.h"
#include "CheckCommand.h"
#include "CommandLine.h"
#include "ConsoleProgress.h"
#include "ControllerSession.h"
#include "DetectCommand.h"
#include "FileCommands.h"
#include "HistoryCommand.h"
#include "ModelsCommand.h"
#include "OutputTarget.h"
#include "PortsCommand.h"
#include "ProgramContext.h"
#include "ReadCommand.h"
#include "ScanCommand.h"
#include "SetCommand.h"
#include "Terminal.h"
#include "TerminationSignals.h"
#include "VisibleText.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace {

// Why nothing may be written; empty when it may.
QString refusal(ProgramContext& program)
{
    if (program.settings().m_isReadOnlyRun)
        return QStringLiteral("nothing was written: --read-only is given");
    if (program.settings().m_bNeverWrite)
        return QStringLiteral("nothing was written: set NeverWrite=False in %1").arg(program.settingsFile());
    return {};
}

CommandResult carryOut(ProgramContext& program, ControllerSession& session, const CommandLine& line)
{
    switch (line.command) {
    case Command::Get:
        return getParameters(session, line);
    case Command::Set:
        return setParameters(session, line);
    case Command::Write:
    case Command::Changes:
        return writeFile(program, session, line);
    case Command::Compare:
        return compareWithController(program, session, line);
    default:
        return readParameters(program, session, line);
    }
}

CommandResult withController(ProgramContext& program, const CommandLine& line, QTextStream& errors)
{
    const bool writes = line.command == Command::Set || line.command == Command::Write;
    program.settings().m_isReadOnlyRun = line.readOnly;
    if (writes && !line.dryRun && !refusal(program).isEmpty())
        return CommandResult::failed(ExitStatus::Refused, refusal(program));
    ConsoleProgress progress(errors, !line.quiet && platform::standardErrorIsTerminal());
    platform::TerminationSignals endRequest;
    ControllerSession session(program, line, progress);
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &session, &ControllerSession::interrupt);
    CommandResult result = carryOut(program, session, line);
    if (line.stats && !session.statisticsText().isEmpty())
        errors << "vorlantctl: " << session.statisticsText() << Qt::endl;
    return result;
}

CommandResult detectModel(ProgramContext& program, const CommandLine& line)
{
    platform::TerminationSignals endRequest;
    DetectCommand command(program, line);
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &command, &DetectCommand::interrupt);
    return command.run();
}

CommandResult scanLine(ProgramContext& program, const CommandLine& line, QTextStream& errors)
{
    ConsoleProgress progress(errors, !line.quiet && platform::standardErrorIsTerminal());
    platform::TerminationSignals endRequest;
    ScanCommand command(program, line, progress, errors);
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &command, &ScanCommand::interrupt);
    return command.run();
}

CommandResult perform(const CommandLine& line, QTextStream& errors)
{
    if (line.command == Command::Help)
        return CommandResult::done(helpText().toUtf8());
    if (line.command == Command::Version)
        return CommandResult::done("vorlantctl " VORLANT_VERSION "\n");
    const platform::SystemColors colors;
    ProgramContext program(QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(), colors);
    program.context().translates = false;
    for (const FolderNotice& notice : program.folderNotices())
        errors << "vorlantctl: " << platform::visibleText(notice.english()) << Qt::endl;
    if (line.command == Command::Models)
        return listModels(program);
    if (line.command == Command::Ports)
        return listPorts(program.ports());
    if (line.command == Command::History)
        return showHistory(program, line);
    if (line.command == Command::Backups)
        return listBackups(program, line);
    if (line.command == Command::CheckDefinitions)
        return checkDefinitions(program, line);
    if (line.command == Command::Detect)
        return detectModel(program, line);
    if (line.command == Command::Scan)
        return scanLine(program, line, errors);
    if (line.command == Command::Show)
        return showFile(program, line);
    if (line.command == Command::Compare && line.words.size() > 1)
        return compareFiles(program, line);
    return withController(program, line, errors);
}

CommandResult run(const QStringList& arguments, QTextStream& errors)
{
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    if (!parsed.error.isEmpty())
        return CommandResult::failed(ExitStatus::Usage, parsed.error);
    CommandResult result = perform(parsed.line, errors);
    if ((!result.failure.isEmpty() && result.output.isEmpty()) || parsed.line.asParameterFile)
        return result;
    const platform::Result<> written = writeOutput(result.output, parsed.line.outputFile);
    if (written.ok())
        return result;
    const QString before = result.failure.isEmpty() ? QString() : result.failure + QStringLiteral("; ");
    return CommandResult::failed(ExitStatus::BadFile, before + written.error());
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    platform::showWarningsVisibly();
    QTextStream errors(stderr);
    const CommandResult result = run(QCoreApplication::arguments().mid(1), errors);
    if (!result.failure.isEmpty())
        errors << "vorlantctl: " << result.failure << Qt::endl;
    return static_cast<int>(result.status);
}
