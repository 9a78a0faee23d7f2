#include "ControlLink.h"

#include "FileLocations.h"
#include "ProgramContext.h"
#include "clsINI.h"

namespace {

CommandResult noPort(const QString& line)
{
    return CommandResult::failed(ExitStatus::NoAnswer, line.simplified());
}

// The port that the link opens by its own settings.
int settingsPortNumber(clsLibrary& library)
{
    clsINI ini = mainSettings(library.context());
    const int number = library.toLong(
        ini.GetIniData(QStringLiteral("Comm1"), QStringLiteral("CommPortNo"), QStringLiteral("1"), true), 1);
    return number >= 1 && number <= platform::kMaxComNumber ? number : 1;
}

} // namespace

ControlLink::ControlLink(ProgramContext& program, const CommandLine& line)
    : m_program(program), m_line(line), m_last(LastState::load(program.library())),
      m_link(program.ports(), program.clock())
{}

CommandResult ControlLink::open()
{
    if (m_program.settings().m_bComm)
        return noPort(
            QStringLiteral("offline working is on; set UseCommunicate=False in %1").arg(m_program.settingsFile()));
    const CommandResult assigned = assignPort();
    if (!assigned.ok())
        return assigned;
    m_link.init(1, &m_program.library());
    if (m_line.timeoutMs)
        m_link.setTimeOutMs(m_line.timeoutMs);
    if (!m_line.speed.isEmpty() || !m_line.chara.isEmpty())
        (void)m_link.changeComm(m_link.Port(), m_line.speed.isEmpty() ? m_link.Speed() : m_line.speed,
                                m_line.chara.isEmpty() ? m_link.Chara() : m_line.chara, false); // saves nothing
    if (m_link.isDeferred())
        m_link.openComm();
    if (m_link.State() != 0)
        return {};
    return noPort(m_link.errorText().isEmpty() ? QStringLiteral("the serial port %1 cannot be opened").arg(text())
                                               : asAskedFor(m_link.errorText()));
}

// Names the port that was asked for in place of the one whose place its device has taken.
QString ControlLink::asAskedFor(QString text) const
{
    const QString place = platform::ComPorts::nameOf(settingsPortNumber(m_program.library()));
    const QString device = QStringLiteral(" (%1)").arg(m_link.device());
    if (m_line.port.isEmpty())
        return text;
    return text.replace(place + device,
                        platform::ComPorts::numberOf(m_line.port) == 0 ? m_line.port : m_line.port + device);
}

// The wanted device takes the place of the port in the settings, so that no other port is touched on the way.
CommandResult ControlLink::assignPort()
{
    if (m_line.port.isEmpty())
        return {};
    const int number = platform::ComPorts::numberOf(m_line.port);
    const QString device = number == 0 ? m_line.port : m_program.ports().device(number);
    if (device.isEmpty())
        return noPort(QStringLiteral("%1: there is no such port; vorlantctl ports lists them").arg(m_line.port));
    m_program.ports().assign(settingsPortNumber(m_program.library()), device);
    return {};
}

int ControlLink::slaveAddress() const
{
    return m_line.slave.value_or(m_last.slaveAddress);
}

int ControlLink::transmissionMode() const
{
    return m_line.transmissionMode.value_or(m_last.transmissionMode);
}

QString ControlLink::text() const
{
    return QStringLiteral("%1 %2,%3 %4 slave %5")
        .arg(m_link.device(), m_link.Speed(), m_link.Chara(),
             transmissionMode() == 1 ? QStringLiteral("ASCII") : QStringLiteral("RTU"))
        .arg(slaveAddress());
}
