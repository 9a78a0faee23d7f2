#include "ModbusFrame.h"

#include "ProtocolNumbers.h"

#include <array>

namespace modbusframe {

namespace {

using CrcTable = std::array<quint16, 256>;

constexpr CrcTable makeCrcTable()
{
    CrcTable table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        unsigned value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1U) != 0 ? (value >> 1U) ^ 0xA001U : value >> 1U;
        table[i] = static_cast<quint16>(value);
    }
    return table;
}

constexpr CrcTable kCrcTable = makeCrcTable();
constexpr char kHexDigits[] = "0123456789ABCDEF";

// -1 for a character that is no upper-case hexadecimal digit.
int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

quint16 crc16(const QByteArray& bytes, qsizetype count)
{
    unsigned crc = 0xFFFF;
    for (qsizetype i = 0; i < count; ++i)
        crc = kCrcTable[(crc ^ static_cast<quint8>(bytes[i])) & 0xFFU] ^ (crc >> 8U);
    return static_cast<quint16>(crc);
}

quint8 lrc(const QByteArray& bytes, qsizetype count)
{
    unsigned sum = 0;
    for (qsizetype i = 0; i < count; ++i)
        sum += static_cast<quint8>(bytes[i]);
    return static_cast<quint8>(0U - sum);
}

QByteArray toAscii(const QByteArray& binary)
{
    if (binary.isEmpty() || binary.size() > kMaxEncodedBytes)
        return {};
    QByteArray text(":");
    text.reserve(2 * binary.size() + 3);
    for (const char c : binary) {
        text += kHexDigits[static_cast<quint8>(c) >> 4U];
        text += kHexDigits[static_cast<quint8>(c) & 0x0FU];
    }
    return text + "\r\n";
}

QByteArray fromAscii(const QByteArray& ascii)
{
    if (ascii.size() % 2 == 0 || ascii.size() > kMaxWireBytes || ascii[0] != ':')
        return {};
    QByteArray binary;
    for (qsizetype i = 1; i + 1 < ascii.size() && ascii[i] != '\r'; i += 2) {
        const int high = digitValue(ascii[i]);
        const int low = digitValue(ascii[i + 1]);
        if (high < 0 || low < 0)
            return {};
        binary += static_cast<char>(high * 16 + low);
    }
    return binary;
}

bool isRefusal(const QByteArray& wire, int slave, int functionCode, bool ascii)
{
    constexpr qsizetype kRefusalBytes = 3;
    if (wire.size() != wireBytes(kRefusalBytes, ascii))
        return false;
    const QByteArray frame = (ascii ? fromAscii(wire) : wire).left(kRefusalBytes);
    const auto at = [&frame](qsizetype index) { return static_cast<quint8>(frame[index]); };
    return frame.size() == kRefusalBytes && at(0) == slave && at(1) == (functionCode | functioncode::kExceptionBit) &&
           exceptioncode::contains(at(2)) && wire == toWire(frame, ascii);
}

QByteArray toWire(const QByteArray& frame, bool ascii)
{
    if (ascii)
        return toAscii(frame + static_cast<char>(lrc(frame, frame.size())));
    const quint16 crc = crc16(frame, frame.size());
    return frame + static_cast<char>(crc & 0xFF) + static_cast<char>(crc >> 8);
}

} // namespace modbusframe
