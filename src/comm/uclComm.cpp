#include "uclComm.h"

#include "EventWait.h"
#include "FileLocations.h"
#include "IniBatch.h"
#include "Numbers.h"
#include "ProgramContext.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <QCoreApplication>
#include <QProcessEnvironment>

#include <algorithm>
#include <limits>

using platform::CommEvent;

namespace {

const QString kNotIdle = QStringLiteral("アイドルではありません。");
const QString kTimeout = QStringLiteral("Timeout");
constexpr int kDefaultTimeOut = 5;
constexpr int kMostBitsPerByte = 12; // start, eight data bits, parity, two stop bits
const QString kStandInSettings = QStringLiteral("9600,N,8,1");
const QString kTimeOutKey = QStringLiteral("RecieveTimeOut(ms)");
constexpr int kTicksPerTimeOut = 10;

// The texts of the serial control's events that are passed on; null for those that mean bytes may have come.
const char* eventText(CommEvent event)
{
    switch (event) {
    case CommEvent::Send:
        return "comEvSend";
    case CommEvent::CTS:
        return "comEvCTS Clear To Send";
    case CommEvent::DSR:
        return "comEvDSR Data Set Ready";
    case CommEvent::CD:
        return "comEvCD Carrier Detect";
    case CommEvent::Ring:
        return "comEvRing";
    case CommEvent::Eof:
        return "comEvEOF EOF (End Of File)";
    case CommEvent::Break:
        return "comEventBreak";
    case CommEvent::Frame:
        return "comEventFrame";
    case CommEvent::Overrun:
        return "comEventOverrun";
    case CommEvent::RxOver:
        return "comEventRxOver";
    case CommEvent::RxParity:
        return "comEventRxParity";
    case CommEvent::TxFull:
        return "comEventTxFull";
    case CommEvent::DCB:
        return "comEventDCB";
    case CommEvent::None:
    case CommEvent::Receive:
        break;
    }
    return nullptr;
}

} // namespace

uclComm::uclComm(const platform::ComPorts& ports, platform::Clock& clock, QObject* parent)
    : QObject(parent), m_ports(ports), m_clock(clock), m_comm(ports), m_timer(clock.makeTimer())
{
    connect(&m_comm, &platform::MSComm::OnComm, this, &uclComm::onCommEvent);
    connect(m_timer.get(), &platform::Timer::timeout, this, &uclComm::onTick);
}

uclComm::~uclComm()
{
    m_timer->stop();
}

void uclComm::init(int lNo, clsLibrary* oLib)
{
    m_library = oLib;
    load(lNo);
}

clsLibrary& uclComm::library()
{
    if (m_library == nullptr) {
        m_ownProgram = std::make_unique<ProgramContext>(QCoreApplication::applicationDirPath(),
                                                        QProcessEnvironment::systemEnvironment(), m_colors);
        m_library = &m_ownProgram->library();
    }
    return *m_library;
}

QString uclComm::section() const
{
    return QStringLiteral("Comm%1").arg(m_linkNo);
}

QString uclComm::device() const
{
    return m_isDeferred || m_comm.device().isEmpty() ? m_comm.portDevice() : m_comm.device();
}

QString uclComm::recordedDevice() const
{
    return hasStandIn() ? QStringLiteral("simulator ") + device() : device();
}

QString uclComm::errorText() const
{
    if (m_isDeferred)
        return {};
    const platform::PortError& error = m_comm.error();
    if (error.pattern.isEmpty() || m_library == nullptr)
        return m_comm.errorText();
    return m_library->tranStr(error.pattern).arg(m_comm.CommPort()).arg(m_comm.device()) + QStringLiteral(": ") +
           error.inWords(m_library->tranStr(error.reason));
}

void uclComm::load(int lNo)
{
    m_linkNo = lNo;
    {
        IniBatch batch(library().context());
        configure(lNo);
        batch.commitLogged();
    }
    prepareComm();
}

void uclComm::configure(int lNo)
{
    Q_UNUSED(lNo);
    const clsLibrary& library = this->library();
    clsINI ini = mainSettings(library.context());
    const auto text = [&](const char* key, const char* defaultText) {
        return ini.GetIniData(section(), QLatin1String(key), QLatin1String(defaultText));
    };
    m_timeOut = library.toLong(text("RecieveTimeOut(s)", "5"), kDefaultTimeOut);
    m_timeOutMs = timeOutOf(ini.GetIniData(section(), kTimeOutKey, QString(), true));
    termComm();
    m_speed = text("CommSpeed", "9600");
    m_chara = text("CommProtocolCharacter", "N,8,1");
    m_comm.setSettings(m_speed + u',' + m_chara);
    m_comm.setInBufferSize(library.toLong(text("InBufferSize", "5000"), 0));
    m_comm.setCommPort(library.toLong(text("CommPortNo", "1"), 1));
    m_port = m_comm.CommPort();
    const QString name = text("CommPortName", "");
    setPortName(m_ports.isNamedForThisRun(m_port) ? QString() : name);
    m_comm.setDTREnable(library.toBoolean(text("DTREnable", "False"), false));
    m_comm.setRTSEnable(library.toBoolean(text("RTSEnable", "False"), false));
    m_comm.setNullDiscard(library.toBoolean(text("NullDiscard", "False"), false));
    m_comm.setHandshaking(library.toLong(text("Handshaking", "0"), 0));
    m_comm.setInputMode(library.toLong(text("InputMode", "1"), 1));
    m_comm.setRThreshold(library.toLong(text("RecvThreshold", "3"), 0));
}

void uclComm::setPortName(const QString& name)
{
    m_portName = name;
    m_standIn.clear();
    m_comm.setPortName(name);
}

void uclComm::setStandIn(const QString& device)
{
    termComm();
    m_standIn = device;
    m_comm.setPortName(hasStandIn() ? m_standIn : m_portName);
    m_comm.setSettings(hasStandIn() ? kStandInSettings : m_speed + u',' + m_chara);
}

void uclComm::prepareComm()
{
    if (!m_comm.isServer()) {
        openComm();
        return;
    }
    termComm();
    m_isDeferred = true;
}

bool uclComm::openComm()
{
    m_state = LinkState::Closed;
    m_isDeferred = false;
    m_timer->stop();
    m_comm.closePort();
    if (!m_comm.openPort())
        return false;
    m_state = LinkState::Idle;
    ++m_openings;
    return m_comm.PortOpen();
}

bool uclComm::termComm()
{
    m_state = LinkState::Closed;
    m_isDeferred = false;
    m_timer->stop();
    m_comm.closePort();
    return false;
}

platform::Result<> uclComm::changeComm(int lComPort, const QString& sSpeed, const QString& sChara, bool bSave)
{
    setStandIn({});
    m_speed = sSpeed;
    m_chara = sChara;
    m_comm.setSettings(m_speed + u',' + m_chara);
    m_comm.setCommPort(lComPort);
    m_port = m_comm.CommPort();
    platform::Result<> saved = bSave ? save() : platform::Result<>();
    prepareComm();
    return saved;
}

platform::Result<> uclComm::save()
{
    clsINI ini = mainSettings(library().context());
    IniBatch batch(library().context());
    ini.PutIniData(section(), QStringLiteral("CommPortNo"), m_port);
    ini.PutIniData(section(), QStringLiteral("CommPortName"), m_portName);
    ini.PutIniData(section(), QStringLiteral("CommSpeed"), m_speed);
    ini.PutIniData(section(), QStringLiteral("CommProtocolCharacter"), m_chara);
    if (timeOutOf(ini.GetIniData(section(), kTimeOutKey, QString(), true)) != m_timeOutMs)
        ini.PutIniData(section(), kTimeOutKey, m_timeOutMs ? QString::number(*m_timeOutMs) : QStringLiteral(""));
    return batch.commit();
}

void uclComm::cancelSend()
{
    ++m_sendings;
    cancelOpening();
}

void uclComm::cancelOpening()
{
    if (m_comm.isOpening())
        m_comm.closePort();
}

QString uclComm::sendMsg(const QByteArray& bBuff, int lRecvSize, const WholeReply& isWhole)
{
    const bool isFirst = m_isDeferred;
    if (m_state != LinkState::Idle && !isFirst)
        return kNotIdle;
    const unsigned sending = ++m_sendings;
    if (isFirst && !openComm())
        return kNotIdle;
    m_comm.Input();
    platform::dispatchPendingEvents();
    // While events ran the port may have been lost, the request given up, or another one sent.
    if (m_state != LinkState::Idle || sending != m_sendings)
        return kNotIdle;
    m_comm.discardInput();
    m_expected = std::clamp(lRecvSize, 0, kMaxReplyBytes);
    m_isWhole = isWhole;
    m_comm.setRThreshold(m_isWhole ? 1 : m_expected);
    m_sent = bBuff;
    m_lastActivityMs = m_clock.elapsedMs();
    m_latestMs = latestMs();
    m_received.clear();
    if (!m_comm.Output(m_sent)) {
        endWait(LinkState::Closed);
        return kNotIdle;
    }
    m_state = LinkState::Waiting;
    m_timer->start(tickMs());
    return {};
}

std::optional<int> uclComm::timeOutOf(const QString& text)
{
    const auto number = platform::parseInt32(text.trimmed());
    const bool isInRange = number && *number >= kLeastTimeOutMs && *number <= kMostTimeOutMs;
    return isInRange ? std::optional<int>(*number) : std::nullopt;
}

void uclComm::giveUp()
{
    if (m_state != LinkState::Waiting)
        return;
    m_comm.discardOutput();
    endWait(LinkState::Idle);
}

void uclComm::onCommEvent()
{
    const CommEvent event = m_comm.Event();
    const char* text = eventText(event);
    if (text == nullptr) {
        checkRecv();
        return;
    }
    const bool wasWaiting = m_state == LinkState::Waiting;
    // A port that has gone brings no reply any more: the wait ends here, and the link is closed.
    if (event == CommEvent::DCB)
        endWait(LinkState::Closed);
    if (wasWaiting)
        Q_EMIT RecieveError(m_sent, replyBuffer(), QLatin1String(text));
}

void uclComm::onTick()
{
    checkRecv();
}

void uclComm::collect()
{
    const QByteArray bytes = m_comm.Input();
    if (bytes.isEmpty())
        return;
    m_received += bytes.left(kMaxReplyBytes - m_received.size());
    m_lastActivityMs = m_clock.elapsedMs();
    // What is still missing raises the next event; otherwise the rest would only be seen at the next tick.
    m_comm.setRThreshold(m_isWhole ? 1 : std::max(m_expected - static_cast<int>(m_received.size()), 1));
}

void uclComm::checkRecv()
{
    if (m_state != LinkState::Waiting)
        return;
    collect();
    if (m_received.size() >= m_expected || (m_isWhole && !m_received.isEmpty() && m_isWhole(m_received))) {
        endWait(LinkState::Idle);
        Q_EMIT RecieveSuccess(m_sent, replyBuffer());
        return;
    }
    if (isTimedOut()) {
        m_comm.discardOutput(); // or a line that was held would get all that was given up, with the next request
        if (m_state != LinkState::Waiting)
            return; // the line was found lost, which has been reported
        endWait(LinkState::Idle);
        Q_EMIT RecieveError(m_sent, replyBuffer(), kTimeout);
    }
}

// Seconds are counted as the clock strikes them.
bool uclComm::isTimedOut() const
{
    const qint64 now = m_clock.elapsedMs();
    if (now > m_latestMs)
        return true;
    if (m_timeOutMs)
        return now - m_lastActivityMs >= *m_timeOutMs;
    return now / platform::kMsPerSecond - m_lastActivityMs / platform::kMsPerSecond > m_timeOut;
}

int uclComm::tickMs() const
{
    return m_timeOutMs ? std::clamp(*m_timeOutMs / kTicksPerTimeOut, 1, kTickMs) : kTickMs;
}

qint64 uclComm::longestWaitMs() const
{
    return m_timeOutMs ? *m_timeOutMs + kTickMs : (m_timeOut + 1) * platform::kMsPerSecond;
}

// At a serial server anything may answer, a byte at a time.
qint64 uclComm::latestMs() const
{
    if (!m_comm.isServer())
        return std::numeric_limits<qint64>::max();
    const qint64 bytes = m_expected + m_sent.size();
    return m_clock.elapsedMs() + longestWaitMs() +
           bytes * kMostBitsPerByte * platform::kMsPerSecond / std::max(m_speed.toInt(), 1);
}

void uclComm::endWait(LinkState state)
{
    m_timer->stop();
    m_state = state;
}
