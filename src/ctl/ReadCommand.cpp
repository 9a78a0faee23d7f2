#include "ReadCommand.h"

#include "FileLocations.h"
#include "ProgramContext.h"
#include "clsINI.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr int kMaxComNumber = 99;

CommandResult failed(ExitStatus status, const QString& line)
{
    return CommandResult::failed(status, line.simplified());
}

// n of "COMn"; 0 for a device.
int comNumber(const QString& port)
{
    static const QRegularExpression form(QStringLiteral("\\ACOM([1-9][0-9]?)\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    return form.match(port).captured(1).toInt();
}

// The port that the link opens by its own settings.
int settingsPortNumber(clsLibrary& library)
{
    clsINI ini = mainSettings(library.context());
    const int number = library.toLong(
        ini.GetIniData(QStringLiteral("Comm1"), QStringLiteral("CommPortNo"), QStringLiteral("1"), true), 1);
    return number >= 1 && number <= kMaxComNumber ? number : 1;
}

} // namespace

ReadCommand::ReadCommand(ProgramContext& program, const CommandLine& line, ProgressView& progress)
    : m_program(program), m_line(line), m_progress(progress), m_last(LastState::load(program.library())),
      m_link(program.ports(), program.clock()), m_kx(program.library())
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
        step = chooseModel(catalogue, m_line.model, m_last, m_model);
    if (step.ok())
        step = checkDefinition();
    if (step.ok())
        step = openLink();
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

CommandResult ReadCommand::openLink()
{
    if (m_program.settings().m_bComm)
        return failed(
            ExitStatus::NoAnswer,
            QStringLiteral("off-line working is on; set UseCommunicate=False in %1").arg(m_program.settingsFile()));
    const CommandResult assigned = assignPort();
    if (!assigned.ok())
        return assigned;
    m_link.init(1, &m_program.library());
    if (m_line.timeoutSeconds)
        m_link.setTimeOut(*m_line.timeoutSeconds);
    if (!m_line.speed.isEmpty() || !m_line.chara.isEmpty())
        m_link.changeComm(m_link.Port(), m_line.speed.isEmpty() ? m_link.Speed() : m_line.speed,
                          m_line.chara.isEmpty() ? m_link.Chara() : m_line.chara, false);
    if (m_link.State() != 0)
        return {};
    return failed(ExitStatus::NoAnswer, m_link.errorText().isEmpty()
                                            ? QStringLiteral("the serial port %1 cannot be opened").arg(lineText())
                                            : m_link.errorText());
}

// The wanted device takes the place of the port in the settings, so that no other port is touched on the way.
CommandResult ReadCommand::assignPort()
{
    if (m_line.port.isEmpty())
        return {};
    const int number = comNumber(m_line.port);
    const QString device = number == 0 ? m_line.port : m_program.ports().resolve(number).device;
    if (device.isEmpty())
        return failed(ExitStatus::NoAnswer,
                      QStringLiteral("%1: there is no such port; vorlantctl ports lists them").arg(m_line.port));
    m_program.ports().assign(settingsPortNumber(m_program.library()), device);
    return {};
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
    ControlShell shell(m_model.modelString, slaveAddress(), transmissionMode());
    m_engine = std::make_unique<TransferEngine>(
        TransferEngine::Parts{m_kx, m_link, m_program.settings(), m_program.traceLog(), m_messages, m_progress, shell});
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
                          .arg(lineText(), m_lostRequest));
    return failed(
        ExitStatus::NoAnswer,
        QStringLiteral("%1: %2; check the adapter and try again").arg(lineText(), m_engine->lastRead().lastFailure));
}

CommandResult ReadCommand::wrongModel() const
{
    const QString answered = m_engine->lastRead().answeredModel.trimmed();
    return failed(ExitStatus::WrongModel, QStringLiteral("%1: the controller is %2, not %3; repeat with --model %2")
                                              .arg(lineText(), answered, m_model.modelString));
}

int ReadCommand::slaveAddress() const
{
    return m_line.slave.value_or(m_last.slaveAddress);
}

int ReadCommand::transmissionMode() const
{
    return m_line.transmissionMode.value_or(m_last.transmissionMode);
}

// "/dev/ttyUSB0 9600,N,8,1 RTU slave 1"
QString ReadCommand::lineText() const
{
    return QStringLiteral("%1 %2,%3 %4 slave %5")
        .arg(m_link.device(), m_link.Speed(), m_link.Chara(),
             transmissionMode() == 1 ? QStringLiteral("ASCII") : QStringLiteral("RTU"))
        .arg(slaveAddress());
}
