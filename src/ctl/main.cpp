#include "CommandLine.h"
#include "ConsoleProgress.h"
#include "DetectCommand.h"
#include "ModelsCommand.h"
#include "OutputTarget.h"
#include "PortsCommand.h"
#include "ProgramContext.h"
#include "ReadCommand.h"
#include "Terminal.h"
#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace {

CommandResult readController(ProgramContext& program, const CommandLine& line, QTextStream& errors)
{
    ConsoleProgress progress(errors, !line.quiet && platform::standardErrorIsTerminal());
    platform::TerminationSignals endRequest;
    ReadCommand command(program, line, progress);
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &command, &ReadCommand::interrupt);
    return command.run();
}

CommandResult detectModel(ProgramContext& program, const CommandLine& line)
{
    platform::TerminationSignals endRequest;
    DetectCommand command(program, line);
    QObject::connect(&endRequest, &platform::TerminationSignals::requested, &command, &DetectCommand::interrupt);
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
    if (line.command == Command::Models)
        return listModels(program);
    if (line.command == Command::Ports)
        return listPorts(program.ports());
    if (line.command == Command::Detect)
        return detectModel(program, line);
    return readController(program, line, errors);
}

CommandResult run(const QStringList& arguments, QTextStream& errors)
{
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    if (!parsed.error.isEmpty())
        return CommandResult::failed(ExitStatus::Usage, parsed.error);
    CommandResult result = perform(parsed.line, errors);
    if (!result.ok() && result.output.isEmpty())
        return result;
    const QString trouble = writeOutput(result.output, parsed.line.outputFile);
    return trouble.isEmpty() ? result : CommandResult::failed(ExitStatus::BadFile, trouble);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream errors(stderr);
    const CommandResult result = run(QCoreApplication::arguments().mid(1), errors);
    if (!result.ok())
        errors << "vorlantctl: " << result.failure << Qt::endl;
    return static_cast<int>(result.status);
}
