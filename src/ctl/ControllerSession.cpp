#include "ControllerSession.h"

#include "LastState.h"
#include "ModelCodes.h"
#include "ProgramContext.h"

#include <algorithm>

namespace {

CommandResult failed(ExitStatus status, const QString& line)
{
    return CommandResult::failed(status, line);
}

// "MODBUS Application Protocol" V1.1b3, 7. 0: the request was not refused.
QString remedyOf(int exceptionCode)
{
    switch (exceptionCode) {
    case 0:
        return QStringLiteral("check cable, speed, mode, slave and model");
    case 4:
    case 8:
        return QStringLiteral("see the controller's manual");
    case 5:
    case 6:
        return QStringLiteral("wait, then repeat the command");
    case 10:
    case 11:
        return QStringLiteral("check the gateway and the line behind it");
    default:
        return QStringLiteral("check model and options");
    }
}

bool mayBeThere(const SentParameter& parameter)
{
    return parameter.outcome == SendOutcome::Accepted || parameter.outcome == SendOutcome::NotAccepted ||
           parameter.outcome == SendOutcome::Failed;
}

} // namespace

ControllerSession::ControllerSession(ProgramContext& program, const CommandLine& line, ProgressView& progress)
    : m_program(program), m_progress(progress), m_withoutBackup(line.withoutBackup), m_controlLink(program, line),
      m_model(program), m_controller(program.settings())
{
    m_program.context().messages = m_messages;
}

ControllerSession::~ControllerSession()
{
    m_program.context().messages = m_program.context().nobody;
}

CommandResult ControllerSession::load(const QString& wanted)
{
    m_wanted = wanted;
    if (!wanted.isEmpty() || !LastState::load(m_program.library()).modelString.isEmpty())
        return m_model.load(wanted);
    // Any will do: the controller says which it is when it is read.
    ModelCatalogue catalogue(m_program.library());
    const CommandResult opened = openCatalogue(m_program, catalogue);
    return opened.ok() ? m_model.load(catalogue.codes().first()) : opened;
}

CommandResult ControllerSession::open()
{
    const CommandResult opened = m_controlLink.open();
    if (!opened.ok())
        return opened;
    m_controller.setModel(kx().entry().number, m_model.modelString());
    m_controller.setLine(m_controlLink.slaveAddress(), m_controlLink.transmissionMode());
    m_controller.setState(MainState::Confirmed);
    m_engine = std::make_unique<TransferEngine>(TransferEngine::Parts{
        kx(), m_controlLink.link(), m_program.settings(), m_program.traceLog(), m_messages, m_progress, m_controller});
    m_engine->setBackup(m_withoutBackup ? TransferEngine::Backup::None : TransferEngine::Backup::Required);
    connect(m_engine.get(), &TransferEngine::attemptFailed, this, &ControllerSession::onAttemptFailed);
    return {};
}

CommandResult ControllerSession::read()
{
    if (m_interrupted)
        return readResult();
    m_engine->getDataFromKX(nullptr);
    if (m_engine->lastRead().outcome != ReadOutcome::WrongModel || !isVariant(m_engine->lastRead().answeredModel))
        return readResult();
    const CommandResult adopted = m_model.load(m_engine->lastRead().answeredModel);
    if (!adopted.ok())
        return wrongModel();
    m_messages.forget();
    m_controller.setModel(kx().entry().number, m_model.modelString());
    m_engine->getDataFromKX(nullptr);
    return readResult();
}

bool ControllerSession::isModelOpen() const
{
    return m_wanted.size() < modelcodes::kModelStringLength;
}

bool ControllerSession::isVariant(const QString& answered) const
{
    return isModelOpen() && answered.startsWith(m_wanted);
}

CommandResult ControllerSession::writeChosen(const QStringList& tags)
{
    if (!m_interrupted)
        m_engine->writeChosen(tags);
    const WriteReport& report = lastWrite();
    m_wrote = report.outcome != WriteOutcome::NoAnswer &&
              std::any_of(report.parameters.begin(), report.parameters.end(), mayBeThere);
    return writeResult();
}

QString ControllerSession::statisticsText() const
{
    return m_engine == nullptr ? QString() : m_engine->statistics().text([](const QString& text) { return text; });
}

void ControllerSession::interrupt()
{
    m_interrupted = true;
    if (m_engine != nullptr)
        m_engine->abort();
}

void ControllerSession::onAttemptFailed(const QString& entry, int attempt, int maximum, const QString& reason)
{
    if (attempt < maximum)
        return;
    m_lostRequest = QStringLiteral("%1: %2, %3 times").arg(entry, reason).arg(maximum);
    m_lostRemedy = remedyOf(m_engine->exceptionCode());
    m_engine->abort();
}

CommandResult ControllerSession::readResult() const
{
    const ReadReport& report = m_engine->lastRead();
    if (m_interrupted)
        return failed(ExitStatus::NoAnswer, QStringLiteral("interrupted; nothing was read"));
    if (report.outcome == ReadOutcome::WrongModel)
        return wrongModel();
    return report.outcome == ReadOutcome::Complete ? definitionResult() : noAnswer();
}

// A read that was walked to its end brings everything only when the definition asks for everything.
CommandResult ControllerSession::definitionResult() const
{
    const ReadReport& report = m_engine->lastRead();
    if (m_model.kx().ColAdr().count() == 0)
        return failed(ExitStatus::BadFile,
                      QStringLiteral("%1 names nothing to read; correct the file").arg(m_model.screenFile()));
    if (report.requests == 0 || !report.givenUp.isEmpty())
        return failed(
            ExitStatus::BadFile,
            QStringLiteral("%1 holds read commands that make no request: %2; correct the file")
                .arg(m_model.commFile(), report.requests == 0 ? QStringLiteral("all") : report.givenUp.join(u", ")));
    const QStringList unread = unreadSections();
    if (!unread.isEmpty())
        return failed(ExitStatus::BadFile,
                      QStringLiteral("%1 holds no complete read command for [%2]; correct the file")
                          .arg(m_model.commFile(), unread.join(u"], [")));
    return {};
}

CommandResult ControllerSession::writeResult() const
{
    const WriteReport& report = lastWrite();
    if (m_interrupted)
        return failed(ExitStatus::NoAnswer,
                      m_wrote ? QStringLiteral("interrupted; some parameters may have been written: read them")
                              : QStringLiteral("interrupted; nothing was written"));
    const bool isReadBack = report.readBack == ReadOutcome::None || report.readBack == ReadOutcome::Complete;
    switch (report.outcome) {
    case WriteOutcome::Complete:
    case WriteOutcome::NothingToDo: // nothing that may go out: the report says why
        return isReadBack ? CommandResult{ExitStatus::Done, QByteArray(), notInHistory()} : noAnswer();
    case WriteOutcome::WrongModel:
        return failed(ExitStatus::WrongModel,
                      QStringLiteral("%1: another model answers now; nothing was written: read it and repeat")
                          .arg(m_controlLink.text()));
    case WriteOutcome::Declined:
        return nothingWritten();
    case WriteOutcome::NoAnswer:
    case WriteOutcome::Aborted:
        return noAnswer();
    default:
        return failed(ExitStatus::NoAnswer, QStringLiteral("%1: the write did not come to its end; %2")
                                                .arg(m_controlLink.text(), m_messages.lastNotice()));
    }
}

// What could not be kept before the first frame.
CommandResult ControllerSession::nothingWritten() const
{
    const QString text =
        m_engine->backupError().isEmpty()
            ? QStringLiteral("nothing was written, because it cannot be entered in the history: %1; correct that, or "
                             "repeat with --no-backup")
            : QStringLiteral("nothing was written, because what the controller holds cannot be kept: %1; correct "
                             "that, or repeat with --no-backup");
    return failed(ExitStatus::BadFile,
                  text.arg(m_engine->backupError().isEmpty() ? m_engine->journalError() : m_engine->backupError()));
}

// Of a write that came to its end: its result may be missing there, or all of it.
QString ControllerSession::notInHistory() const
{
    if (m_engine->journalError().isEmpty())
        return platform::visibleText(m_messages.lastNotice().simplified());
    return platform::visibleText(
        QStringLiteral("the write is not in the history: %1").arg(m_engine->journalError().simplified()));
}

// Sections that parameters name but that made no request: their values are not the controller's.
QStringList ControllerSession::unreadSections() const
{
    QStringList sections;
    const ImageCollection& images = m_model.kx().ColAdr();
    for (int i = 0; i < images.count(); ++i) {
        if (!images.at(i).isFilled() && !images.at(i).isCommandsOnly())
            sections << images.at(i).Section();
    }
    return sections;
}

CommandResult ControllerSession::noAnswer() const
{
    const QString remedy =
        m_wrote ? QStringLiteral("; some parameters may have been written: check the line and read them") : QString();
    if (!m_lostRequest.isEmpty())
        return failed(ExitStatus::NoAnswer, QStringLiteral("%1: request failed: %2; %3%4")
                                                .arg(m_controlLink.text(), m_lostRequest, m_lostRemedy, remedy));
    return failed(
        ExitStatus::NoAnswer,
        QStringLiteral("%1: %2; check the adapter and try again%3").arg(m_controlLink.text(), lastLineFault(), remedy));
}

// The read before a write went well.
QString ControllerSession::lastLineFault() const
{
    const WriteReport& report = lastWrite();
    if (!report.failed.isEmpty())
        return report.failed.last().text();
    return report.parameters.isEmpty() ? m_engine->lastRead().lastFailure : report.parameters.first().reason;
}

CommandResult ControllerSession::wrongModel() const
{
    const QString answered = m_engine->lastRead().answeredModel.trimmed();
    return failed(ExitStatus::WrongModel, QStringLiteral("%1: the controller is %2, not %3; repeat with --model %2")
                                              .arg(m_controlLink.text(), answered, m_model.modelString()));
}
