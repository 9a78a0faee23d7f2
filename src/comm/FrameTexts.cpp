#include "FrameTexts.h"

#include "ProtocolNumbers.h"
#include "clsModbus.h"

#include <QStringList>

using namespace functioncode;

namespace {

using Direction = FrameFields::Direction;
using Fault = FrameFields::Fault;

constexpr qsizetype kLongestShown = 1024; // no frame is longer
constexpr int kShortAddress = 4;          // digits

struct Named
{
    int code;
    const char* name;
};

constexpr Named kFunctions[] = {{kReadCoils, "read coils"},
                                {kReadDiscreteInputs, "read discrete inputs"},
                                {kReadHoldingRegisters, "read holding registers"},
                                {kReadInputRegisters, "read input registers"},
                                {kWriteCoil, "write coil"},
                                {kWriteRegister, "write register"},
                                {kWriteRegisters, "write registers"},
                                {kReadFloats, "read floats"},
                                {kWriteFloats, "write floats"}};

// "MODBUS Application Protocol" V1.1b3, 7.
constexpr Named kExceptions[] = {{1, "illegal function"},      {2, "illegal data address"},
                                 {3, "illegal data value"},    {4, "device failure"},
                                 {5, "acknowledge"},           {6, "device busy"},
                                 {8, "memory parity error"},   {10, "gateway path unavailable"},
                                 {11, "gateway target failed"}};

template <size_t Count> const char* nameOf(const Named (&table)[Count], int code)
{
    for (const Named& entry : table) {
        if (entry.code == code)
            return entry.name;
    }
    return "unknown";
}

QString text(const TranslateText& tran, const char* english)
{
    return tran(QString::fromLatin1(english));
}

QString sizes(const FrameFields& fields, const TranslateText& tran, const char* english)
{
    return text(tran, english).arg(fields.wire.size()).arg(fields.wireBytes);
}

QString checkFault(const FrameFields& fields, const TranslateText& tran)
{
    return text(tran, fields.ascii ? "LRC wrong: %1 instead of %2" : "CRC wrong: %1 instead of %2")
        .arg(QString::fromLatin1(fields.check.toHex().toUpper()),
             QString::fromLatin1(fields.rightCheck.toHex().toUpper()));
}

QString faultText(const FrameFields& fields, const TranslateText& tran)
{
    switch (fields.fault) {
    case Fault::None:
        return {};
    case Fault::DamagedLine:
        return text(tran, "the line of the log is damaged: %1").arg(fields.line);
    case Fault::NoReply:
        return text(tran, "no reply");
    case Fault::NoFrame:
        return text(tran, "no frame: %1 bytes").arg(fields.wire.size());
    case Fault::Truncated:
        return sizes(fields, tran, "cut off: %1 of %2 bytes");
    case Fault::TooLong:
        return sizes(fields, tran, "too long: %1 instead of %2 bytes");
    case Fault::WrongCheck:
        return checkFault(fields, tran);
    case Fault::OtherSlave:
        return text(tran, "slave %1 answers instead of %2").arg(*fields.slave).arg(*fields.askedSlave);
    case Fault::OtherFunction:
        return text(tran, "answers function %1 instead of %2").arg(*fields.function).arg(*fields.askedFunction);
    case Fault::Exception:
        return frametexts::refusal(*fields.exception, tran);
    case Fault::OtherEcho:
        return text(tran, "confirms something else than was sent");
    case Fault::NotAccepted:
        return text(tran, "valid, but it answers another request or came too late");
    }
    return {};
}

void addField(QStringList& parts, const TranslateText& tran, const char* name, const QString& value)
{
    if (!value.isEmpty())
        parts << text(tran, name) + QStringLiteral(": ") + value;
}

QString addressText(const FrameFields& fields)
{
    const auto reference = fields.reference();
    return frametexts::address(fields) + (reference ? QStringLiteral(" (%1)").arg(*reference) : QString());
}

QString numberText(const std::optional<int>& number)
{
    return number ? QString::number(*number) : QString();
}

} // namespace

namespace frametexts {

QString direction(const FrameFields& fields, const TranslateText& tran)
{
    switch (fields.direction) {
    case Direction::Sent:
        return text(tran, "Sent");
    case Direction::SentAgain:
        return text(tran, "Sent again");
    case Direction::Received:
        return text(tran, "Received");
    case Direction::Rejected:
        return text(tran, "Rejected");
    case Direction::Memory:
        return text(tran, "Memory");
    case Direction::Note:
        break;
    }
    return text(tran, "Note");
}

QString function(const FrameFields& fields, const TranslateText& tran)
{
    if (!fields.function)
        return {};
    const char* memory = fields.writesMemory ? "write memory" : "read memory";
    const char* name = *fields.function == kMemory ? memory : nameOf(kFunctions, *fields.function);
    return QString::number(*fields.function) + u' ' + text(tran, name);
}

QString address(const FrameFields& fields)
{
    return fields.address ? QString::number(*fields.address, 16).toUpper().rightJustified(kShortAddress, u'0')
                          : QString();
}

QString check(const FrameFields& fields, const TranslateText& tran)
{
    if (fields.check.isEmpty())
        return {};
    if (fields.ascii)
        return text(tran, fields.isCheckRight() ? "LRC OK" : "LRC wrong");
    return text(tran, fields.isCheckRight() ? "CRC OK" : "CRC wrong");
}

QString remark(const FrameFields& fields, const TranslateText& tran)
{
    if (fields.direction == Direction::Memory)
        return text(tran, fields.writesMemory ? "to be written" : "before the write");
    if (fields.direction == Direction::Note && !fields.isError())
        return fields.line;
    return faultText(fields, tran);
}

QString details(const FrameFields& fields, const QString& stamp, const QString& parameters, const TranslateText& tran)
{
    QStringList head{stamp, direction(fields, tran)};
    if (!fields.wire.isEmpty()) {
        head << (fields.ascii ? QStringLiteral("ASCII") : QStringLiteral("RTU"))
             << text(tran, "%1 bytes").arg(fields.wire.size());
    }
    QStringList parts;
    addField(parts, tran, "Slave", numberText(fields.slave));
    addField(parts, tran, "Function", function(fields, tran));
    addField(parts, tran, "Address", addressText(fields));
    addField(parts, tran, "Count", numberText(fields.count));
    addField(parts, tran, "Check", check(fields, tran));
    QStringList lines{head.join(QStringLiteral("   ")), parts.join(QStringLiteral("   ")), parameters,
                      remark(fields, tran)};
    if (fields.ascii)
        lines << clsModbus::ChangeMsg(QString::fromLatin1(fields.wire.left(kLongestShown)));
    lines << hexBytes(fields.direction == Direction::Memory ? fields.data : fields.wire);
    lines.removeAll(QString());
    return lines.join(u'\n');
}

QString refusal(int exceptionCode, const TranslateText& tran)
{
    return text(tran, "the controller refused the request (exception %1, %2)")
        .arg(exceptionCode)
        .arg(text(tran, nameOf(kExceptions, exceptionCode)));
}

QString hexBytes(const QByteArray& bytes)
{
    const QString shown = QString::fromLatin1(bytes.left(kLongestShown).toHex(' ').toUpper());
    return bytes.size() > kLongestShown ? shown + QStringLiteral(" ...") : shown;
}

} // namespace frametexts
