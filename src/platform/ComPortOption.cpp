#include "ComPortOption.h"

#include <QtEndian>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

// Commands and options of telnet, by their names in RFC 854, 856, 858 and 2217.
constexpr quint8 SE = 240;
constexpr quint8 SB = 250;
constexpr quint8 WILL = 251;
constexpr quint8 WONT = 252;
constexpr quint8 DO = 253;
constexpr quint8 DONT = 254;
constexpr quint8 IAC = 255;
constexpr quint8 TRANSMIT_BINARY = 0;
constexpr quint8 SUPPRESS_GO_AHEAD = 3;
constexpr quint8 COM_PORT_OPTION = 44;
constexpr quint8 SET_BAUDRATE = 1;
constexpr quint8 SET_DATASIZE = 2;
constexpr quint8 SET_PARITY = 3;
constexpr quint8 SET_STOPSIZE = 4;
constexpr quint8 SET_CONTROL = 5;
constexpr quint8 PURGE_DATA = 12;
constexpr quint8 kPurgeBoth = 3;
constexpr quint8 kAnswerOffset = 100; // of the server's commands

const QString kOptionRefused =
    QStringLiteral("the serial server refuses the COM port option (RFC 2217); switch it on there, or use tcp://");
const QString kOtherSpeed = QStringLiteral("the serial server does not set this speed; choose another one");
const QString kOtherFormat = QStringLiteral("the serial server does not set this data format; choose another one");
const QString kOtherLines = QStringLiteral("the serial server does not set handshaking, DTR or RTS as wanted; change "
                                           "Handshaking, DTREnable or RTSEnable in the settings");

quint8 parityCode(QSerialPort::Parity parity)
{
    switch (parity) {
    case QSerialPort::OddParity:
        return 2;
    case QSerialPort::EvenParity:
        return 3;
    case QSerialPort::MarkParity:
        return 4;
    case QSerialPort::SpaceParity:
        return 5;
    default:
        return 1;
    }
}

quint8 stopCode(QSerialPort::StopBits bits)
{
    return bits == QSerialPort::TwoStop ? 2 : bits == QSerialPort::OneAndHalfStop ? 3 : 1;
}

quint8 flowCode(Handshake handshake)
{
    return handshake == Handshake::Hardware ? 3 : handshake == Handshake::Software ? 2 : 1;
}

// The values of SET-CONTROL are about several things: an answer belongs to the question about the same one.
int subjectOf(quint8 command, const QByteArray& value)
{
    const int code = command == SET_CONTROL && value.size() == 1 ? static_cast<quint8>(value[0]) : 0;
    return code <= 3 ? 0 : code <= 6 ? 1 : code <= 9 ? 2 : code <= 12 ? 3 : 4; // flow, break, DTR, RTS, inbound flow
}

QByteArray oneByte(quint8 code)
{
    return QByteArray(1, static_cast<char>(code));
}

bool isKnown(quint8 option)
{
    return option == TRANSMIT_BINARY || option == SUPPRESS_GO_AHEAD || option == COM_PORT_OPTION;
}

} // namespace

void ComPortOption::start(const LineSettings& settings)
{
    *this = {};
    m_settings = settings;
    for (const quint8 option : {COM_PORT_OPTION, TRANSMIT_BINARY, SUPPRESS_GO_AHEAD}) {
        m_mine[option] = Agreement::Asked;
        command(WILL, option);
    }
    for (const quint8 option : {TRANSMIT_BINARY, SUPPRESS_GO_AHEAD}) {
        m_theirs[option] = Agreement::Asked;
        command(DO, option);
    }
}

// The lines come first: a server whose port has none may say nothing of them, and answers what follows.
void ComPortOption::set(const LineSettings& settings)
{
    m_settings = settings;
    const bool isHardware = settings.handshake == Handshake::Hardware;
    ask(SET_CONTROL, oneByte(settings.dtr ? 8 : 9), kOtherLines, true);
    if (!isHardware)
        ask(SET_CONTROL, oneByte(settings.rts ? 11 : 12), kOtherLines, true);
    QByteArray speed(4, '\0');
    qToBigEndian(settings.speed, speed.data());
    ask(SET_BAUDRATE, speed, kOtherSpeed);
    ask(SET_DATASIZE, oneByte(static_cast<quint8>(settings.format.dataBits)), kOtherFormat);
    ask(SET_PARITY, oneByte(parityCode(settings.format.parity)), kOtherFormat);
    ask(SET_STOPSIZE, oneByte(stopCode(settings.format.stopBits)), kOtherFormat);
    ask(SET_CONTROL, oneByte(flowCode(settings.handshake)), kOtherLines);
}

void ComPortOption::purge()
{
    ask(PURGE_DATA, oneByte(kPurgeBoth), {}, true);
}

// A new question takes the place of an open one about the same thing.
void ComPortOption::ask(quint8 command, const QByteArray& value, const QString& refusal, bool mayStaySilent)
{
    std::erase_if(m_asked, [&](const Asked& asked) {
        return asked.command == command && subjectOf(command, asked.value) == subjectOf(command, value);
    });
    m_asked.push_back({command, value, refusal, mayStaySilent});
    for (const quint8 code : {IAC, SB, COM_PORT_OPTION, command})
        m_output += static_cast<char>(code);
    m_output += escape(value);
    for (const quint8 code : {IAC, SE})
        m_output += static_cast<char>(code);
}

void ComPortOption::command(quint8 verb, quint8 option)
{
    for (const quint8 code : {IAC, verb, option})
        m_output += static_cast<char>(code);
}

QByteArray ComPortOption::takeOutput()
{
    return std::exchange(m_output, {});
}

QByteArray ComPortOption::escape(const QByteArray& bytes)
{
    return QByteArray(bytes).replace("\xFF", "\xFF\xFF");
}

ComPortOption::State ComPortOption::state() const
{
    if (!m_reason.isEmpty())
        return State::Failed;
    const bool isAgreed = m_mine[COM_PORT_OPTION] == Agreement::On && m_mine[TRANSMIT_BINARY] == Agreement::On &&
                          m_theirs[TRANSMIT_BINARY] == Agreement::On;
    const bool isSet =
        std::all_of(m_asked.begin(), m_asked.end(), [](const Asked& asked) { return asked.mayStaySilent; });
    return isAgreed && isSet ? State::Ready : State::Negotiating;
}

QByteArray ComPortOption::receive(const QByteArray& bytes)
{
    QByteArray data;
    for (const char byte : bytes)
        take(static_cast<quint8>(byte), data);
    return data;
}

void ComPortOption::take(quint8 byte, QByteArray& data)
{
    switch (m_reading) {
    case Reading::Data:
        if (byte == IAC)
            m_reading = Reading::Command;
        else
            data += static_cast<char>(byte);
        break;
    case Reading::Command:
        takeCommand(byte, data);
        break;
    case Reading::Option:
        m_reading = Reading::Data;
        agree(m_verb, byte);
        break;
    case Reading::Subnegotiation:
        if (byte == IAC)
            m_reading = Reading::CommandInside;
        else
            takeInside(byte);
        break;
    case Reading::CommandInside:
        takeCommandInside(byte, data);
        break;
    }
}

void ComPortOption::takeCommand(quint8 byte, QByteArray& data)
{
    m_reading = Reading::Data;
    if (byte == IAC) {
        data += static_cast<char>(byte);
    } else if (byte == SB) {
        m_inside.clear();
        m_reading = Reading::Subnegotiation;
    } else if (byte >= WILL) {
        m_verb = byte;
        m_reading = Reading::Option;
    }
}

void ComPortOption::takeInside(quint8 byte)
{
    if (m_inside.size() <= kMostOptionBytes)
        m_inside += static_cast<char>(byte);
}

// Anything else than its end breaks a subnegotiation off.
void ComPortOption::takeCommandInside(quint8 byte, QByteArray& data)
{
    m_reading = Reading::Subnegotiation;
    if (byte == IAC) {
        takeInside(byte);
        return;
    }
    if (byte != SE) {
        takeCommand(byte, data);
        return;
    }
    m_reading = Reading::Data;
    const bool isAnswer = m_inside.size() >= 2 && m_inside.size() <= kMostOptionBytes &&
                          static_cast<quint8>(m_inside[0]) == COM_PORT_OPTION;
    if (isAnswer && static_cast<quint8>(m_inside[1]) > kAnswerOffset)
        takeAnswer(static_cast<quint8>(m_inside[1]) - kAnswerOffset, m_inside.mid(2));
}

// Answers only what changes something, so that no two ends confirm each other for ever.
void ComPortOption::agree(quint8 verb, quint8 option)
{
    const bool isMine = verb == DO || verb == DONT;
    const bool isOn = verb == DO || verb == WILL;
    Agreement& agreement = (isMine ? m_mine : m_theirs)[option];
    if (isOn && (!isKnown(option) || (!isMine && option == COM_PORT_OPTION))) {
        command(isMine ? WONT : DONT, option);
        return;
    }
    const Agreement before = std::exchange(agreement, isOn ? Agreement::On : Agreement::Off);
    if (isOn && before == Agreement::Off)
        command(isMine ? WILL : DO, option);
    if (!isOn && before == Agreement::On)
        command(isMine ? WONT : DONT, option);
    if (!isOn && (option == TRANSMIT_BINARY || option == COM_PORT_OPTION) && before != Agreement::Off)
        fail(kOptionRefused);
    if (isMine && isOn && option == COM_PORT_OPTION && before != Agreement::On)
        set(LineSettings(m_settings));
}

void ComPortOption::takeAnswer(quint8 command, const QByteArray& value)
{
    const auto asked = std::find_if(m_asked.begin(), m_asked.end(), [&](const Asked& one) {
        return one.command == command && subjectOf(command, one.value) == subjectOf(command, value);
    });
    if (asked == m_asked.end())
        return;
    if (asked->value != value && !asked->refusal.isEmpty())
        fail(asked->refusal);
    m_asked.erase(asked);
}

void ComPortOption::fail(const QString& reason)
{
    if (m_reason.isEmpty())
        m_reason = reason;
}

} // namespace platform
