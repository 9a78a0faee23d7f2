#include "ControllerScan.h"

#include "ModbusFrame.h"
#include "ModelCodes.h"
#include "ProtocolNumbers.h"
#include "clsLibrary.h"
#include "uclComm.h"

#include <algorithm>

namespace {

constexpr int kSlowMs = 1000;     // the time-out for a slave that is known to answer late
constexpr int kGarbledSlaves = 2; // one after the other: it is not for their numbers

} // namespace

ControllerScan::ControllerScan(uclComm& link, const clsLibrary& library, QObject* parent)
    : QObject(parent), m_link(link), m_library(library)
{}

ControllerScan::~ControllerScan() = default;

bool ControllerScan::run(const Plan& plan)
{
    if (m_isBusy)
        return false;
    m_isBusy = true;
    m_isStopped = m_isDone = false;
    m_plan = plan;
    m_asked = 0;
    m_total =
        static_cast<int>(plan.ports.size() * plan.settings.size()) * std::max(plan.lastSlave - plan.firstSlave + 1, 0);
    const std::optional<int> timeOutMs = m_link.timeOutMs();
    for (const int port : plan.ports) {
        if (!isEnded())
            scanPort(port);
    }
    m_channel.reset();
    m_link.termComm();
    m_link.setTimeOutMs(timeOutMs);
    m_isBusy = false;
    return !m_isStopped;
}

void ControllerScan::stop()
{
    m_isStopped = true;
    m_link.cancelOpening();
    if (m_channel)
        m_channel->abort();
}

// An adapter may not take one of the settings; one that took none, or has gone, is given up.
void ControllerScan::scanPort(int port)
{
    m_port = port;
    m_otherSettings.clear();
    const int slaves = m_plan.lastSlave - m_plan.firstSlave + 1;
    const int end = m_asked + static_cast<int>(m_plan.settings.size()) * slaves;
    bool wasOpen = false;
    for (const LineSettings& line : m_plan.settings) {
        if (isEnded())
            return;
        const bool isOpen = openPort(port, line);
        wasOpen = wasOpen || isOpen;
        if (!wasOpen || (isOpen && !scanSetting(line))) {
            Q_EMIT portFailed(port, m_link.errorText());
            break;
        }
        if (!isOpen)
            m_asked += slaves;
    }
    m_asked = isEnded() ? m_asked : end;
}

bool ControllerScan::openPort(int port, const LineSettings& line)
{
    m_line = line;
    (void)m_link.changeComm(port, line.speed, line.chara, false); // saves nothing
    if (m_link.isDeferred())                                      // a serial server
        m_link.openComm();
    return m_link.State() != 0;
}

bool ControllerScan::scanSetting(const LineSettings& line)
{
    m_garbledInRow = 0;
    m_link.setTimeOutMs(scanplan::timeOutMs(line));
    for (int slave = m_plan.firstSlave; slave <= m_plan.lastSlave && !isEnded(); ++slave) {
        Q_EMIT asking(line, slave, m_asked++, m_total);
        const Answer answer = lookAt(slave);
        if (isEnded())
            return true;
        if (answer == Answer::Gone)
            return false;
        tell(answer, slave);
    }
    tellCollision();
    return true;
}

ControllerScan::Answer ControllerScan::lookAt(int slave)
{
    Answer answer = ask(slave, modelcodes::kModelAddress);
    if (answer != Answer::Garbled)
        return answer;
    if (const int late = lateSlave(slave)) {
        m_link.setTimeOutMs(kSlowMs);
        tell(ask(late, modelcodes::kModelAddress), late);
        m_link.setTimeOutMs(scanplan::timeOutMs(m_line));
    }
    return isEnded() ? Answer::Silent : askAgain(slave);
}

ControllerScan::Answer ControllerScan::ask(int slave, int address)
{
    const platform::Clock& clock = m_library.context().machine.clock;
    m_channel = std::make_unique<RequestChannel>(m_link, m_library, m_traceLog);
    ModelQuestion question(*m_channel, m_library);
    question.prepare(slave, m_line.mode, address);
    const qint64 begin = clock.elapsedMs();
    const RequestChannel::Result result = question.exchange();
    m_responseMs = static_cast<int>(clock.elapsedMs() - begin);
    m_isStopped = m_isStopped || m_channel->isAborted();
    m_answer.clear();
    if (m_isStopped)
        return Answer::Silent;
    if (result == RequestChannel::Result::Success) {
        m_answer = question.answer();
        return Answer::Sound;
    }
    const QByteArray received = m_channel->received();
    if (result == RequestChannel::Result::Refused || m_link.State() == 0)
        return Answer::Gone;
    if (received.isEmpty())
        return Answer::Silent;
    const bool isRefusal = modbusframe::isRefusal(received, slave, functioncode::kMemory, m_line.mode == 1);
    return isRefusal ? Answer::Refused : Answer::Garbled;
}

// When the line is quiet again: a burst of noise answers once.
ControllerScan::Answer ControllerScan::askAgain(int slave)
{
    m_channel->pause(scanplan::timeOutMs(m_line));
    return isEnded() ? Answer::Silent : ask(slave, modelcodes::kModelAddress);
}

// The slave that was asked before and whose sound answer has come only now; 0: none.
int ControllerScan::lateSlave(int asked) const
{
    const QByteArray wire = m_channel->received();
    const bool ascii = m_line.mode == 1;
    const QByteArray frame = ascii ? modbusframe::fromAscii(wire).chopped(1) : wire.chopped(2);
    const int slave = frame.isEmpty() ? 0 : static_cast<quint8>(frame[0]);
    const bool isEarlier = slave >= m_plan.firstSlave && slave < asked;
    return isEarlier && modbusframe::toWire(frame, ascii) == wire ? slave : 0;
}

// Two controllers with one slave number whose answers do not overlap.
bool ControllerScan::isAnsweredTwice()
{
    m_channel->pause(scanplan::timeOutMs(m_line));
    return !m_link.takeStray().isEmpty();
}

void ControllerScan::tell(Answer answer, int slave)
{
    if (answer == Answer::Garbled) {
        noteGarbled(slave);
        return;
    }
    tellCollision();
    if (answer != Answer::Sound && answer != Answer::Refused)
        return;
    const int responseMs = m_responseMs;
    QString model = m_answer;
    const bool isTwice = isAnsweredTwice();
    if (!isTwice && !isEnded() && !modelcodes::isOfFamily(model) &&
        ask(slave, modelcodes::kOtherModelAddress) == Answer::Sound && modelcodes::isOfFamily(m_answer))
        model = m_answer;
    if (isEnded())
        return;
    if (isTwice)
        tellFound(ScanFind::Kind::Collision, slave);
    else
        tellFound(modelcodes::isOfFamily(model) ? ScanFind::Kind::Controller : ScanFind::Kind::NoModel, slave, model,
                  responseMs);
}

void ControllerScan::tellFound(ScanFind::Kind kind, int slave, const QString& model, int responseMs)
{
    m_isDone = m_isDone || (m_plan.onlyFirst && kind == ScanFind::Kind::Controller);
    Q_EMIT found({kind, m_port, m_link.device(), m_line, slave, model, responseMs});
}

void ControllerScan::noteGarbled(int slave)
{
    m_garbledSlave = slave;
    if (++m_garbledInRow != kGarbledSlaves)
        return;
    const QString line = m_line.speed + u',' + m_line.chara;
    if (!m_otherSettings.contains(line))
        tellFound(ScanFind::Kind::OtherSetting, 0);
    m_otherSettings.insert(line);
}

// When the next slave gives no such answer: it is this number's own.
void ControllerScan::tellCollision()
{
    if (m_garbledInRow == 1)
        tellFound(ScanFind::Kind::Collision, m_garbledSlave);
    m_garbledInRow = 0;
}
