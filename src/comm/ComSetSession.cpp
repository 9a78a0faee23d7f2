#include "ComSetSession.h"

#include "ComSetOwner.h"
#include "LineChoices.h"
#include "MessagePresenter.h"
#include "ModelCatalogue.h"
#include "ModelCodes.h"
#include "ServerAddress.h"
#include "SlaveRange.h"
#include "clsLibrary.h"

namespace {

const QString kUnit = QStringLiteral("bps");
constexpr int kLinkNumber = 1;

} // namespace

ComSetSession::ComSetSession(const Parts& parts, QObject* parent)
    : QObject(parent), m_parts(parts), m_uclComm1(parts.ports, parts.library.context().machine.clock),
      m_detection(m_uclComm1, parts.library, parts.commandLine),
      m_recent(parts.library.context(), QStringLiteral("Port"), kRecentPorts), m_scan(m_uclComm1, parts.library),
      m_ports(parts.ports, parts.library)
{
    connect(&m_detection, &ModelDetection::asking, this, &ComSetSession::asking);
}

ComSetSession::~ComSetSession()
{
    close();
}

void ComSetSession::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_detection.Logs(objErrLog, objTrcLog);
    m_scan.setTraceLog(objTrcLog);
}

void ComSetSession::stop()
{
    m_detection.stop();
    if (m_scan.isBusy())
        m_scan.stop();
}

ComSetFields ComSetSession::open()
{
    uclComm& mainLink = m_parts.owner.mainLink();
    m_speeds.clear();
    for (const QString& speed : linechoices::speeds())
        m_speeds << speed + kUnit;
    m_codes = ModelCatalogue(m_parts.library).codes();
    ComSetFields fields;
    fields.port = {mainLink.PortName().isEmpty() ? mainLink.Port() : 0, QString(), mainLink.PortName()};
    m_ports.look(fields.port);
    fields.speedText = selectSpeed(mainLink.Speed());
    fields.chara = mainLink.Chara();
    m_otherChara.clear();
    keepOtherChara(fields.chara);
    if (mainLink.timeOutMs())
        fields.timeOutText = QString::number(*mainLink.timeOutMs());
    fields.ascii = m_parts.owner.transmissionMode() == 1;
    fields.slaveText = QString::number(m_parts.owner.slaveAddress());
    const int position = m_parts.owner.modelNumber() - 1;
    fields.modelPosition = position < m_codes.size() ? position : -1;
    fields.modelString = m_parts.owner.currentModel();
    if (fields.modelString.isEmpty())
        fields.modelString = pickModel(fields.modelPosition);
    mainLink.termComm();
    m_holdsPort = true;
    m_uclComm1.init(kLinkNumber, &m_parts.library);
    m_triedPort = m_uclComm1.Port();
    return fields;
}

void ComSetSession::keepOtherChara(const QString& chara)
{
    if (!linechoices::isOffered(chara))
        m_otherChara = chara;
}

// A speed that the settings hold but the list does not is offered too: it may be the one that works.
QString ComSetSession::selectSpeed(const QString& speed)
{
    if (speed.isEmpty())
        return m_speeds.first();
    QString text = speed;
    text = text.remove(kUnit) + kUnit;
    if (!m_speeds.contains(text))
        m_speeds << text;
    return text;
}

void ComSetSession::close()
{
    stop();
    m_uclComm1.termComm();
    if (m_holdsPort)
        m_parts.owner.mainLink().prepareComm();
    m_holdsPort = false;
}

void ComSetSession::lookAtPorts(PortChoice& choice)
{
    if (m_detection.isBusy() || m_scan.isBusy() || !m_ports.look(choice))
        return;
    const bool isClosed = m_uclComm1.State() == 0 && !m_uclComm1.isDeferred();
    if (m_holdsPort && isClosed && choice.number == m_triedPort)
        m_uclComm1.prepareComm(); // its adapter may be there again
}

bool ComSetSession::isPortSound(const PortChoice& port)
{
    return port.name.isEmpty() ? port.number > 0 : platform::ServerAddress::check(port.name).ok();
}

QString ComSetSession::portError(const PortChoice& port) const
{
    const platform::Result<> sound = platform::ServerAddress::check(port.name);
    if (!sound.ok())
        return port.name + QStringLiteral(": ") + m_parts.library.tranStr(sound.error());
    const bool isNamed = !port.name.isEmpty();
    const QString missing = isNamed ? QString() : m_ports.error(port.number);
    const bool isTried = port.name == m_uclComm1.PortName() && (isNamed || port.number == m_triedPort);
    return missing.isEmpty() && isTried && m_uclComm1.State() == 0 ? m_uclComm1.errorText() : missing;
}

QString ComSetSession::lineWarning(const ComSetFields& fields) const
{
    if (fields.ascii || LineSettings{speed(fields), fields.chara, 0}.isPossible())
        return {};
    return m_parts.library.tranStr(QStringLiteral("RTU needs 8 data bits; choose such a data format, or ASCII"));
}

QString ComSetSession::pickModel(int modelPosition) const
{
    const QString code = m_codes.value(modelPosition);
    return code.isEmpty() ? QString() : modelcodes::handPicked(code);
}

QString ComSetSession::speed(const ComSetFields& fields)
{
    QString text = fields.speedText;
    return text.remove(kUnit);
}

std::optional<int> ComSetSession::slaveNumber(const ComSetFields& fields) const
{
    const int number = m_parts.library.toLong(fields.slaveText, 0);
    return number >= slaverange::kFirst && number <= slaverange::kLastOfControllers ? std::optional(number)
                                                                                    : std::nullopt;
}

bool ComSetSession::isInRange(const ComSetFields& fields)
{
    if (!slaveNumber(fields))
        reportRange(slaverange::kFirst, slaverange::kLastOfControllers);
    else if (!isTimeOutRight(fields))
        reportRange(uclComm::kLeastTimeOutMs, uclComm::kMostTimeOutMs);
    else
        return true;
    return false;
}

// The port as it is numbered now. False, and reported, where none is meant.
bool ComSetSession::takePort(ComSetFields& fields)
{
    if (fields.port.name.isEmpty())
        m_ports.look(fields.port);
    if (isPortSound(fields.port))
        return true;
    report(portError(fields.port));
    return false;
}

void ComSetSession::reportRange(int least, int most)
{
    report(m_parts.library.tranStr(QStringLiteral("It is outside the setting range.")) +
           QStringLiteral("[ %1 <= X <= %2 ]").arg(least).arg(most));
}

bool ComSetSession::isTimeOutRight(const ComSetFields& fields)
{
    return fields.timeOutText.trimmed().isEmpty() || uclComm::timeOutOf(fields.timeOutText);
}

DetectionResult ComSetSession::detect(ComSetFields& fields)
{
    if (!takePort(fields) || !isInRange(fields))
        return DetectionResult::Stopped;
    m_uclComm1.setPortName(fields.port.name);
    (void)m_uclComm1.changeComm(fields.port.number, speed(fields), fields.chara, false); // saves nothing
    m_triedPort = m_uclComm1.Port();
    m_uclComm1.setTimeOutMs(uclComm::timeOutOf(fields.timeOutText));
    m_detection.setModelString(fields.modelString);
    const Detection detection = m_detection.detect(*slaveNumber(fields), fields.ascii ? 1 : 0, m_codes);
    Q_EMIT asked();
    if (detection.result == DetectionResult::Stopped)
        return detection.result;
    fields.modelString = m_detection.modelString();
    if (detection.result == DetectionResult::Found)
        fields.modelPosition = detection.position;
    else if (detection.result == DetectionResult::NoAnswer)
        reportNoAnswer();
    else
        report(m_parts.library.tranStr(QStringLiteral("It does not correspond to this model.")));
    return detection.result;
}

// Why matters: a port that another program holds is no fault of the cable.
void ComSetSession::reportNoAnswer()
{
    const QString reason = m_uclComm1.State() == 0 ? m_uclComm1.errorText() : m_detection.failure();
    const QString text = m_parts.library.tranStr(QStringLiteral("There was no response."));
    report(reason.isEmpty() ? text : text + u'\n' + reason);
}

bool ComSetSession::search(ComSetFields& fields)
{
    if (!takePort(fields))
        return false;
    m_uclComm1.setPortName(fields.port.name);
    ControllerScan::Plan plan;
    plan.ports = {fields.port.name.isEmpty() ? fields.port.number : m_triedPort};
    plan.settings = scanplan::settings({speed(fields), fields.chara, fields.ascii ? 1 : 0}, {});
    plan.firstSlave = slaverange::kFirst;
    plan.lastSlave = slaverange::kLastOfControllers;
    m_triedPort = plan.ports.first();
    return m_scan.run(plan);
}

void ComSetSession::takeFind(const ScanFind& find, ComSetFields& fields)
{
    fields.speedText = selectSpeed(find.line.speed);
    fields.chara = find.line.chara;
    keepOtherChara(find.line.chara);
    fields.ascii = find.line.mode == 1;
    fields.slaveText = QString::number(find.slave);
    fields.modelString = find.model;
    fields.modelPosition = modelcodes::select(find.model, m_codes).position;
}

bool ComSetSession::confirm(ComSetFields& fields)
{
    bool valid = takePort(fields) && isModelKnown(fields) && isInRange(fields);
    if (valid && !m_parts.owner.mayDiscard())
        return false;
    valid = valid && takePort(fields); // the questions may have taken their time
    m_parts.owner.setConfirmed(valid);
    return valid;
}

// Off-line the model string is taken as it is; on-line only the controller's own word counts.
bool ComSetSession::isModelKnown(ComSetFields& fields)
{
    if (!m_parts.library.context().settings.get().m_bComm) {
        const QString before = fields.modelString;
        fields.modelString.clear();
        const DetectionResult result = detect(fields);
        if (result == DetectionResult::Stopped)
            fields.modelString = before;
        return result == DetectionResult::Found;
    }
    const modelcodes::Selection selection = modelcodes::select(fields.modelString, m_codes);
    if (selection.match == modelcodes::Match::Found) {
        fields.modelPosition = selection.position;
        return true;
    }
    report(m_parts.library.tranStr(QStringLiteral("It does not correspond to this model.")));
    return false;
}

void ComSetSession::apply(const ComSetFields& fields)
{
    ComSetOwner& owner = m_parts.owner;
    m_uclComm1.termComm(); // first: the port has room for one
    owner.mainLink().setPortName(fields.port.name);
    if (fields.port.name.isEmpty())
        m_ports.remember(fields.port.number);
    else
        m_recent.add(fields.port.name);
    owner.mainLink().setTimeOutMs(uclComm::timeOutOf(fields.timeOutText));
    const platform::Result<> saved = owner.mainLink().changeComm(fields.port.number, speed(fields), fields.chara);
    if (!saved.ok())
        report(m_parts.library.tranStr(QStringLiteral("The settings were not saved: %1")).arg(saved.error()));
    owner.takeOver(slaveNumber(fields).value_or(slaverange::kFirst), fields.ascii ? 1 : 0, fields.modelPosition,
                   fields.modelString);
    close();
    owner.startRead();
}

void ComSetSession::dismiss()
{
    m_parts.owner.setConfirmed(false);
    close();
}

void ComSetSession::report(const QString& text)
{
    m_parts.library.showMessage(text, MessageStyle::kExclamation);
}
