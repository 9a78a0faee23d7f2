#include "FrameFields.h"

#include "FrameLength.h"
#include "ModbusFrame.h"
#include "ProtocolNumbers.h"

using namespace functioncode;

namespace {

constexpr qsizetype kHeadBytes = 2; // slave and function

// Reference number of address 0.
constexpr struct
{
    int function;
    int base;
} kReferences[] = {{kReadCoils, reference::kCoil},
                   {kReadDiscreteInputs, reference::kDiscreteInput},
                   {kReadHoldingRegisters, reference::kHoldingRegister},
                   {kReadInputRegisters, reference::kInputRegister},
                   {kWriteCoil, reference::kCoil},
                   {kWriteRegister, reference::kHoldingRegister},
                   {kWriteRegisters, reference::kHoldingRegister},
                   {kReadFloats, reference::kFloat},
                   {kWriteFloats, reference::kFloat}};

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

// A frame of slave 58 in RTU begins with the byte of a colon too, but hardly goes on in digits.
bool looksAscii(const QByteArray& wire)
{
    return wire.size() > 2 && wire[0] == ':' && isHexDigit(wire[1]) && isHexDigit(wire[2]);
}

// What can be read of a broken ASCII frame.
QByteArray leadingBytes(const QByteArray& wire)
{
    qsizetype end = 1;
    while (end + 1 < wire.size() && isHexDigit(wire[end]) && isHexDigit(wire[end + 1]))
        end += 2;
    return QByteArray::fromHex(wire.mid(1, end - 1));
}

} // namespace

FrameFields FrameFields::ofRequest(const QByteArray& wire)
{
    FrameFields fields;
    fields.direction = Direction::Sent;
    fields.wire = wire;
    fields.parseWire(looksAscii(wire));
    fields.parseRequest();
    if (fields.check.isEmpty())
        fields.fault = Fault::NoFrame;
    else if (!fields.isCheckRight())
        fields.fault = Fault::WrongCheck;
    return fields;
}

FrameFields FrameFields::ofReply(const QByteArray& wire, const FrameFields* request)
{
    FrameFields fields;
    fields.direction = Direction::Received;
    fields.wire = wire;
    fields.parseWire(request != nullptr ? request->ascii : looksAscii(wire));
    fields.parseReply(request);
    fields.judge(request);
    return fields;
}

bool FrameFields::isWrite() const
{
    switch (function.value_or(0)) {
    case kWriteCoil:
    case kWriteRegister:
    case kWriteRegisters:
    case kWriteFloats:
        return true;
    default:
        return function == kMemory && writesMemory;
    }
}

std::optional<int> FrameFields::reference() const
{
    for (const auto& entry : kReferences) {
        if (address && entry.function == function.value_or(0))
            return entry.base + static_cast<int>(*address);
    }
    return std::nullopt;
}

void FrameFields::parseWire(bool isAscii)
{
    ascii = isAscii;
    const QByteArray whole = ascii ? modbusframe::fromAscii(wire) : wire;
    const qsizetype checkBytes = ascii ? 1 : 2;
    if (whole.size() >= kHeadBytes + checkBytes) {
        m_frame = whole.chopped(checkBytes);
        check = whole.right(checkBytes);
        rightCheck = ascii ? QByteArray(1, static_cast<char>(modbusframe::lrc(m_frame, m_frame.size())))
                           : modbusframe::toWire(m_frame, false).right(checkBytes);
    } else {
        m_frame = ascii ? leadingBytes(wire) : wire;
    }
    slave = byteAt(0);
    function = byteAt(1);
}

std::optional<int> FrameFields::byteAt(qsizetype index) const
{
    return index < m_frame.size() ? std::optional<int>(static_cast<quint8>(m_frame[index])) : std::nullopt;
}

std::optional<int> FrameFields::wordAt(qsizetype index) const
{
    const auto low = byteAt(index + 1);
    return low ? std::optional<int>(*byteAt(index) * 256 + *low) : std::nullopt;
}

void FrameFields::parseAddress(qsizetype index, int bytes)
{
    if (index + bytes > m_frame.size())
        return;
    quint32 value = 0;
    for (int i = 0; i < bytes; ++i)
        value = value << 8U | static_cast<quint8>(m_frame[index + i]);
    address = value;
}

void FrameFields::parseRequest()
{
    switch (function.value_or(0)) {
    case kMemory:
        writesMemory = byteAt(2).value_or(0) != 0;
        parseAddress(3, 4);
        count = byteAt(7);
        data = m_frame.mid(8);
        break;
    case kReadFloats:
    case kWriteFloats:
        parseAddress(3, 2);
        count = wordAt(5);
        data = m_frame.mid(8);
        break;
    case kWriteCoil:
    case kWriteRegister:
        parseAddress(2, 2);
        data = m_frame.mid(4);
        break;
    case kReadCoils:
    case kReadDiscreteInputs:
    case kReadHoldingRegisters:
    case kReadInputRegisters:
    case kWriteRegisters:
        parseAddress(2, 2);
        count = wordAt(4);
        data = m_frame.mid(7);
        break;
    default:
        data = m_frame.mid(kHeadBytes);
    }
}

void FrameFields::parseReply(const FrameFields* request)
{
    if (request != nullptr) {
        askedSlave = request->slave;
        askedFunction = request->function;
    }
    if (request != nullptr && wire.isEmpty()) { // what was not answered
        slave = request->slave;
        function = request->function;
    }
    if (isException(function.value_or(0)))
        parseException();
    else
        parseReplyData(request);
    if (request == nullptr || function != request->function)
        return;
    if (!address)
        address = request->address;
    if (!count)
        count = request->count;
}

void FrameFields::parseReplyData(const FrameFields* request)
{
    const bool answers = request != nullptr && function == request->function;
    writesMemory = answers ? request->writesMemory : byteAt(2).value_or(0) != 0;
    switch (function.value_or(0)) {
    case kMemory:
        if (writesMemory) {
            parseAddress(3, 4);
            count = byteAt(7);
        } else {
            data = m_frame.mid(4);
        }
        break;
    case kReadFloats:
        data = m_frame.mid(4);
        break;
    case kWriteFloats:
        parseAddress(3, 2);
        count = wordAt(5);
        break;
    case kWriteCoil:
    case kWriteRegister:
        parseAddress(2, 2);
        data = m_frame.mid(4);
        break;
    case kWriteRegisters:
        parseAddress(2, 2);
        count = wordAt(4);
        break;
    case kReadCoils:
    case kReadDiscreteInputs:
    case kReadHoldingRegisters:
    case kReadInputRegisters:
        data = m_frame.mid(3);
        break;
    default:
        data = m_frame.mid(kHeadBytes);
    }
}

void FrameFields::parseException()
{
    function = *function - kExceptionBit;
    exception = byteAt(2);
    data = m_frame.mid(3);
}

qsizetype FrameFields::replyBytes() const
{
    return framelength::ofReply(function.value_or(0), count.value_or(0), writesMemory);
}

// Bytes of the binary frame, as a reply announces them.
qsizetype FrameFields::ownBytes() const
{
    switch (function.value_or(0)) {
    case kReadCoils:
    case kReadDiscreteInputs:
    case kReadHoldingRegisters:
    case kReadInputRegisters:
        return byteAt(2) ? 3 + *byteAt(2) : 0;
    case kMemory:
        return writesMemory || !byteAt(3) ? replyBytes() : 4 + *byteAt(3);
    case kReadFloats:
        return byteAt(3) ? 4 + *byteAt(3) : 0;
    default:
        return replyBytes();
    }
}

void FrameFields::judge(const FrameFields* request)
{
    qsizetype wanted = request != nullptr ? request->replyBytes() : ownBytes();
    if (exception && isCheckRight())
        wanted = kHeadBytes + 1;
    wireBytes = wanted == 0 ? 0 : modbusframe::wireBytes(wanted, ascii);
    if (wire.isEmpty())
        fault = Fault::NoReply;
    else if (check.isEmpty())
        fault = wire.size() < wireBytes ? Fault::Truncated : Fault::NoFrame;
    else if (isCheckRight() && askedSlave && slave != askedSlave)
        fault = Fault::OtherSlave;
    else if (isCheckRight() && askedFunction && function != askedFunction)
        fault = Fault::OtherFunction;
    else if (wanted != 0 && m_frame.size() != wanted)
        fault = m_frame.size() < wanted ? Fault::Truncated : Fault::TooLong;
    else if (!isCheckRight())
        fault = Fault::WrongCheck;
    else if (exception)
        fault = Fault::Exception;
    else if (request != nullptr && !confirms(*request))
        fault = Fault::OtherEcho;
}

// A write is confirmed by its own fields. Only those that the reply repeats are looked at.
bool FrameFields::confirms(const FrameFields& request) const
{
    switch (function.value_or(0)) {
    case kWriteCoil:
    case kWriteRegister:
        return address == request.address && data == request.data;
    case kWriteRegisters:
    case kWriteFloats:
        return address == request.address && count == request.count;
    case kMemory:
        return !writesMemory || (address == request.address && count == request.count);
    default:
        return true;
    }
}
