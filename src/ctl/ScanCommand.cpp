#include "ScanCommand.h"

#include "OutputTarget.h"
#include "PortsCommand.h"
#include "ProgramContext.h"
#include "ScanModel.h"
#include "TextTable.h"
#include "TextWidth.h"
#include "VisibleText.h"

#include <QSet>

#include <algorithm>

namespace {

const QString kAllPorts = QStringLiteral("all");
constexpr int kDeviceColumn = 1;

CommandLine withoutAll(CommandLine line)
{
    if (line.port == kAllPorts)
        line.port.clear();
    return line;
}

QString asItIs(const QString& text)
{
    return text;
}

} // namespace

ScanCommand::ScanCommand(ProgramContext& program, const CommandLine& line, ProgressView& progress, QTextStream& errors)
    : m_program(program), m_commandLine(withoutAll(line)), m_line(program, m_commandLine), m_progress(progress),
      m_errors(errors),
      m_scan(m_line.link(), program.library()), m_rows{{QStringLiteral("port"), QStringLiteral("device"),
                                                        QStringLiteral("speed"), QStringLiteral("format"),
                                                        QStringLiteral("mode"), QStringLiteral("slave"),
                                                        QStringLiteral("model"), QStringLiteral("ms"),
                                                        QStringLiteral("remark")},
                                                       {},
                                                       {}},
      m_widths{5, 12, 6, 6, 5, 5, 14, 4, 0}
{
    m_scan.setTraceLog(program.traceLog());
    m_isOfAllPorts = line.port == kAllPorts;
    connect(&m_scan, &ControllerScan::asking, this, &ScanCommand::show);
    connect(&m_scan, &ControllerScan::found, this, &ScanCommand::note);
    connect(&m_scan, &ControllerScan::portFailed, this, [this](int, const QString& reason) { notePort(reason); });
}

CommandResult ScanCommand::run()
{
    const CommandResult opened = m_line.open();
    if (!opened.ok() && (!m_isOfAllPorts || m_program.settings().m_bComm))
        return opened;
    const QList<int> ports = m_isOfAllPorts ? allPorts() : QList<int>{m_line.link().Port()};
    if (ports.isEmpty())
        return noPorts();
    for (const int port : ports)
        m_widths[kDeviceColumn] =
            std::max(m_widths[kDeviceColumn], platform::displayWidth(m_program.ports().device(port)));
    const bool isWhole = m_scan.run(plan(ports));
    m_progress.close();
    return result(isWhole);
}

void ScanCommand::interrupt()
{
    m_scan.stop();
}

// Each device once.
QList<int> ScanCommand::allPorts() const
{
    QList<int> numbers;
    QSet<QString> named;
    for (const platform::ComPort& port : m_program.ports().all()) {
        if (port.number == 0 || named.contains(port.device))
            continue;
        named.insert(port.device);
        numbers << port.number;
    }
    return numbers;
}

ControllerScan::Plan ScanCommand::plan(const QList<int>& ports) const
{
    const uclComm& link = m_line.link();
    return {ports,
            scanplan::settings({link.Speed(), link.Chara(), m_line.transmissionMode()}, m_commandLine.scanChoice),
            m_commandLine.firstSlave, m_commandLine.lastSlave, m_commandLine.onlyFirst};
}

void ScanCommand::show(const LineSettings& line, int slave, int done, int total)
{
    if (done == 0)
        m_progress.open(total, QString(), QString(), false, false);
    m_progress.setPosition(done);
    m_progress.setText(QStringLiteral("%1 %2 slave %3").arg(m_line.link().device(), line.text()).arg(slave));
}

void ScanCommand::note(const ScanFind& find)
{
    QStringList fields = scantexts::cells(find, asItIs);
    fields.insert(kDeviceColumn, find.device);
    m_rows.rows << fields;
    m_answering += find.kind == ScanFind::Kind::Controller || find.kind == ScanFind::Kind::NoModel ? 1 : 0;
    if (!isPrintedAtOnce())
        return;
    m_progress.close();
    if (m_rows.rows.size() == 1)
        print(tableHeadings(m_rows.columns));
    print(fields);
}

bool ScanCommand::isPrintedAtOnce() const
{
    return m_commandLine.format == OutputFormat::Table && m_commandLine.outputFile.isEmpty();
}

void ScanCommand::print(const QStringList& fields)
{
    if (m_printed.ok())
        m_printed = writeOutput(TextTable::line(platform::visibleTexts(fields), m_widths).toUtf8(), QString());
    if (!m_printed.ok())
        m_scan.stop();
}

void ScanCommand::notePort(const QString& reason)
{
    m_failure = platform::visibleText(reason.simplified());
    if (!m_isOfAllPorts)
        return;
    m_progress.close();
    m_errors << "vorlantctl: " << m_failure << "; skipped" << Qt::endl;
}

CommandResult ScanCommand::result(bool isWhole) const
{
    if (!m_printed.ok())
        return CommandResult::failed(ExitStatus::BadFile, m_printed.error());
    CommandResult result;
    if (!isWhole)
        result = CommandResult::failed(ExitStatus::NoAnswer, QStringLiteral("interrupted; not all was asked"));
    else if (!m_failure.isEmpty() && !m_isOfAllPorts)
        result = CommandResult::failed(ExitStatus::NoAnswer, m_failure);
    else if (m_answering == 0 && !m_rows.rows.isEmpty())
        result = CommandResult::failed(ExitStatus::NoAnswer,
                                       QStringLiteral("no valid reply; try other speeds, formats and slaves"));
    else if (m_answering == 0)
        result = CommandResult::failed(
            ExitStatus::NoAnswer,
            QStringLiteral("no controller answered; check cable and power, or try other speeds, formats and slaves"));
    if (!isPrintedAtOnce() && (result.ok() || !m_rows.rows.isEmpty()))
        result.output = formatRows(m_rows, m_commandLine.format);
    return result;
}
