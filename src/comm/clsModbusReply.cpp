#include "clsModbus.h"

#include "ModbusFrame.h"
#include "ProtocolNumbers.h"

#include <bit>

// The receiving half of clsModbus as a master: the check of a frame and the interpretation of a reply.

namespace {

constexpr int kMinFrameBytes = 2; // address and function code

quint8 byteAt(const QByteArray& bytes, qsizetype index)
{
    return index < bytes.size() ? static_cast<quint8>(bytes[index]) : 0;
}

} // namespace

bool clsModbus::fail(int code)
{
    m_errorCode = code;
    return false;
}

bool clsModbus::SetRecvMessage(QByteArray& bytRecv, qint32 lngRecvSize)
{
    m_errorCode = kNoError;
    QByteArray frame;
    const bool isThere = lngRecvSize >= 0 && lngRecvSize <= bytRecv.size();
    bool valid = isThere && checkFrame(bytRecv, lngRecvSize, frame);
    if (valid && m_masterMode) {
        interpretRequest(frame);
        valid = false;
    } else if (valid) {
        valid = interpretReply(frame);
    }
    if (!valid)
        return m_errorCode == kNoError ? fail(kBadReply) : false;
    m_received.replace(0, m_recvSize, bytRecv.left(m_recvSize).leftJustified(m_recvSize, '\0'));
    return true;
}

// frame: address, function code and data, without the check value.
bool clsModbus::checkFrame(QByteArray& bytes, qsizetype length, QByteArray& frame)
{
    if (m_transmissionMode == 1) {
        const QByteArray decoded =
            length < modbusframe::kMinAsciiBytes ? QByteArray() : modbusframe::fromAscii(bytes.left(length));
        if (decoded.isEmpty())
            return fail(kBadReply);
        bytes = decoded;
        frame = decoded.chopped(1);
        if (modbusframe::lrc(frame, frame.size()) != static_cast<quint8>(decoded.back()))
            return fail(kLrcError);
        if (frame.size() < kMinFrameBytes)
            return fail(kBadReply);
    } else {
        if (length < modbusframe::kMinRtuBytes || length > modbusframe::kMaxWireBytes)
            return fail(kBadReply);
        frame = bytes.left(length - 2);
        const quint16 crc = modbusframe::crc16(frame, frame.size());
        if (byteAt(bytes, length - 2) != (crc & 0xFF) || byteAt(bytes, length - 1) != crc >> 8)
            return fail(kCrcError);
    }
    return byteAt(frame, 0) == m_slaveAddress || fail(kBadReply);
}

bool clsModbus::interpretReply(const QByteArray& frame)
{
    const int functionCode = byteAt(frame, 1);
    if (functioncode::isException(functionCode))
        return fail(byteAt(frame, 2));
    switch (functionCode) {
    case functioncode::kReadCoils:
    case functioncode::kReadDiscreteInputs:
        return readBytes(frame, 3, byteAt(frame, 2));
    case functioncode::kReadHoldingRegisters:
    case functioncode::kReadInputRegisters:
        return readRegisters(frame);
    case functioncode::kWriteCoil:
    case functioncode::kWriteRegister:
        return frame == m_request;
    case functioncode::kWriteRegisters:
        return sameAt(frame, 4);
    case functioncode::kMemory:
        if (byteAt(m_request, 2) != 0)
            return functionCode == byteAt(m_request, 1);
        return readBytes(frame, 4, byteAt(m_request, 7));
    case functioncode::kReadFloats:
        return readFloats(frame);
    case functioncode::kWriteFloats:
        return sameAt(frame, 5);
    default:
        return false;
    }
}

bool clsModbus::sameAt(const QByteArray& frame, int offset) const
{
    return frame.size() >= offset + 2 && ByteToInt(frame, offset) == ByteToInt(m_request, offset);
}

// Values that the reply announces but does not hold are a failure: nothing is made up.
bool clsModbus::readBytes(const QByteArray& frame, int first, int count)
{
    if (count > kValues || frame.size() < first + count)
        return false;
    for (int i = 1; i <= count; ++i)
        setDigitalVal(i, byteAt(frame, first + i - 1));
    return true;
}

bool clsModbus::readRegisters(const QByteArray& frame)
{
    const int count = byteAt(frame, 2) / 2;
    if (count > kValues || frame.size() < 3 + 2 * count)
        return false;
    for (int i = 1; i <= count; ++i)
        setAlalogVal(i, ByteToInt(frame, 2 * i + 1));
    return true;
}

bool clsModbus::readFloats(const QByteArray& frame)
{
    const int count = byteAt(frame, 3) / 4;
    if (count > kValues || frame.size() < 4 + 4 * count)
        return false;
    for (int i = 1; i <= count; ++i) {
        quint32 bits = 0;
        for (int k = 3; k >= 0; --k)
            bits = bits << 8U | byteAt(frame, 4 * i + k);
        setFloatingVal(i, std::bit_cast<float>(bits));
    }
    return true;
}
