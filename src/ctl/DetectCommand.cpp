#include "DetectCommand.h"

#include "ModelChoice.h"
#include "ModelCodes.h"
#include "ProgramContext.h"
#include "VisibleText.h"

DetectCommand::DetectCommand(ProgramContext& program, const CommandLine& line)
    : m_program(program), m_line(program, line), m_detection(m_line.link(), program.library(), QString())
{
    m_detection.Logs(program.errorLog(), program.traceLog());
}

CommandResult DetectCommand::run()
{
    ModelCatalogue catalogue(m_program.library());
    CommandResult step = openCatalogue(m_program, catalogue);
    if (step.ok())
        step = m_line.open();
    if (!step.ok())
        return step;
    const QStringList codes = catalogue.codes();
    return result(m_detection.detect(m_line.slaveAddress(), m_line.transmissionMode(), codes), codes);
}

void DetectCommand::interrupt()
{
    m_detection.stop();
}

CommandResult DetectCommand::result(const Detection& detection, const QStringList& codes) const
{
    const QString model = platform::visibleText(m_detection.modelString().trimmed());
    switch (detection.result) {
    case DetectionResult::Found:
        return CommandResult::done((model + u' ' + codes.value(detection.position) + u'\n').toUtf8());
    case DetectionResult::NotFound: {
        CommandResult unknown = CommandResult::failed(
            ExitStatus::WrongModel, QStringLiteral("%1: the model catalogue lacks \"%2\"; vorlantctl models lists it")
                                        .arg(m_line.text(), model));
        unknown.output = model.toUtf8() + '\n';
        return unknown;
    }
    case DetectionResult::NoAnswer:
        return CommandResult::failed(ExitStatus::NoAnswer,
                                     QStringLiteral("%1: no valid reply to the question for the model: %2; check %3")
                                         .arg(m_line.text(), m_detection.failure(),
                                              m_detection.isRefused()
                                                  ? QStringLiteral("the slave address: this may be another device")
                                                  : QStringLiteral("cable, speed, mode and slave"))
                                         .simplified());
    case DetectionResult::Stopped:
        break;
    }
    return CommandResult::failed(ExitStatus::NoAnswer, QStringLiteral("interrupted; no model was detected"));
}
