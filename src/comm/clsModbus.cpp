#include "clsModbus.h"

#include "FrameLength.h"
#include "ModbusError.h"
#include "ModbusFrame.h"
#include "ProtocolNumbers.h"
#include "SlaveRange.h"

#include <bit>
#include <cstring>

namespace {

constexpr int kMaxCount = 120;
constexpr int kMaxFloats = 60;

void checkReference(qint32 number, qint32 base, const QString& operation)
{
    if (number < base || number >= base + reference::kTableSize)
        throw ModbusError(QStringLiteral("Reference number is invalid value."), operation);
}

void checkCount(qint32 count, qint32 maximum, const QString& operation)
{
    if (count < 1 || count > maximum)
        throw ModbusError(QStringLiteral("Count is invalid value."), operation);
}

QByteArray big16(qint32 value)
{
    return clsModbus::IntToByte(static_cast<qint16>(value));
}

// The controllers' form of a memory address, most significant byte first. Each byte comes from a division that rounds
// to zero: a negative address, such as a four-digit one that was read as 16 bits, gives leading zero bytes.
QByteArray memoryAddress(qint32 address)
{
    QByteArray bytes;
    for (const qint32 divisor : {1 << 24, 1 << 16, 1 << 8, 1})
        bytes += static_cast<char>(address / divisor & 0xFF);
    return bytes;
}

// Least significant byte first, as function codes 70 and 71 carry a single.
QByteArray littleSingle(float value)
{
    const auto bits = std::bit_cast<quint32>(value);
    QByteArray bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(bits >> shift & 0xFFU);
    return bytes;
}

} // namespace

clsModbus::clsModbus(QObject* parent) : QObject(parent) {}

void clsModbus::setSlaveAddress(int address)
{
    if (!slaverange::contains(address))
        throw ModbusError(QStringLiteral("SlaveAddress is 1 to 247"), QStringLiteral("SlaveAddress"));
    m_slaveAddress = address;
}

IndexedBytes clsModbus::DigitalVals() const
{
    return {1, QByteArray(reinterpret_cast<const char*>(m_bytes.data()), kValues)};
}

void clsModbus::setDigitalVals(const IndexedBytes& values)
{
    for (int i = 1; i <= kValues; ++i) {
        if (values.contains(i))
            setDigitalVal(i, values.at(i));
    }
}

// items: as for the length of the reply.
bool clsModbus::request(int functionCode, const QByteArray& data, int items, bool writesMemory)
{
    m_request = QByteArray(1, static_cast<char>(m_slaveAddress)) + static_cast<char>(functionCode) + data;
    m_wire = modbusframe::toWire(m_request, isAscii());
    m_recvSize =
        static_cast<int>(modbusframe::wireBytes(framelength::ofReply(functionCode, items, writesMemory), isAscii()));
    return true;
}

bool clsModbus::readReferences(int functionCode, qint32 offset, qint32 count)
{
    return request(functionCode, big16(offset) + big16(count), count);
}

bool clsModbus::ReadDigitalSetValue(qint32 StartRefNumber, qint32 Count)
{
    checkReference(StartRefNumber, reference::kCoil, QStringLiteral("ReadDigitalSetValue"));
    checkCount(Count, kMaxCount, QStringLiteral("ReadDigitalSetValue"));
    return readReferences(functioncode::kReadCoils, StartRefNumber - reference::kCoil, Count);
}

bool clsModbus::ReadDigitalInputData(qint32 StartRefNumber, qint32 Count)
{
    checkReference(StartRefNumber, reference::kDiscreteInput, QStringLiteral("ReadDigitalInputData"));
    checkCount(Count, kMaxCount, QStringLiteral("ReadDigitalInputData"));
    return readReferences(functioncode::kReadDiscreteInputs, StartRefNumber - reference::kDiscreteInput, Count);
}

bool clsModbus::ReadAnalogSetValue(qint32 StartRefNumber, qint32 Count)
{
    checkReference(StartRefNumber, reference::kHoldingRegister, QStringLiteral("ReadAnalogSetValue"));
    checkCount(Count, kMaxCount, QStringLiteral("ReadAnalogSetValue"));
    return readReferences(functioncode::kReadHoldingRegisters, StartRefNumber - reference::kHoldingRegister, Count);
}

bool clsModbus::ReadAnalogInputData(qint32 StartRefNumber, qint32 Count)
{
    checkCount(Count, kMaxCount, QStringLiteral("ReadAnalogInputData"));
    const qint64 offset = static_cast<qint64>(StartRefNumber) - reference::kInputRegister;
    if (offset < INT16_MIN || offset > INT16_MAX)
        throw ModbusError(QStringLiteral("Overflow"), QStringLiteral("ReadAnalogInputData"));
    return readReferences(functioncode::kReadInputRegisters, static_cast<qint32>(offset), Count);
}

bool clsModbus::WriteDigitalSetValue(qint32 SetRefNumber, bool SetValue)
{
    if (SetRefNumber < reference::kCoil || SetRefNumber >= reference::kCoil + reference::kTableSize)
        return false;
    return request(functioncode::kWriteCoil, big16(SetRefNumber - reference::kCoil) + big16(SetValue ? 0xFF00 : 0), 1);
}

bool clsModbus::WriteAnalogSetValue(qint32 SetRefNumber, qint16 SetValue)
{
    checkReference(SetRefNumber, reference::kHoldingRegister, QStringLiteral("WriteAnalogSetValue"));
    return request(functioncode::kWriteRegister, big16(SetRefNumber - reference::kHoldingRegister) + big16(SetValue),
                   1);
}

bool clsModbus::WriteAnalogSetValues(qint32 SetRefNumber, const std::vector<qint16>& SetValues, qint32 Count)
{
    checkReference(SetRefNumber, reference::kHoldingRegister, QStringLiteral("WriteAnalogSetValues"));
    checkCount(Count, kMaxCount, QStringLiteral("WriteAnalogSetValues"));
    QByteArray data = big16(SetRefNumber - reference::kHoldingRegister) + big16(Count) + static_cast<char>(2 * Count);
    for (qint32 i = 1; i <= Count; ++i)
        data += big16(SetValues.at(static_cast<size_t>(i)));
    return request(functioncode::kWriteRegisters, data, Count);
}

bool clsModbus::ReadFloatingData(qint32 StartRefNumber, qint32 Count)
{
    checkReference(StartRefNumber, reference::kFloat, QStringLiteral("ReadFloatingData"));
    checkCount(Count, kMaxFloats, QStringLiteral("ReadFloatingData"));
    return request(functioncode::kReadFloats,
                   QByteArray(1, '\0') + big16(StartRefNumber - reference::kFloat) + big16(Count), Count);
}

bool clsModbus::WriteFloatingData(qint32 SetRefNumber, const std::vector<float>& SetValues, qint32 Count)
{
    checkReference(SetRefNumber, reference::kFloat, QStringLiteral("WriteFloatingData"));
    checkCount(Count, kMaxFloats, QStringLiteral("WriteFloatingData"));
    QByteArray data =
        QByteArray(1, '\0') + big16(SetRefNumber - reference::kFloat) + big16(Count) + static_cast<char>(4 * Count);
    for (qint32 i = 1; i <= Count; ++i)
        data += littleSingle(SetValues.at(static_cast<size_t>(i)));
    return request(functioncode::kWriteFloats, data, Count);
}

bool clsModbus::ReadDirectMemory(qint32 StartMemoryAddress, qint32 Count)
{
    checkCount(Count, kMaxCount, QStringLiteral("ReadDirectMemory"));
    return request(functioncode::kMemory,
                   QByteArray(1, '\0') + memoryAddress(StartMemoryAddress) + static_cast<char>(Count), Count);
}

bool clsModbus::WriteDirectMemory(qint32 StartMemoryAddress, qint32 Count)
{
    checkCount(Count, kMaxCount, QStringLiteral("WriteDirectMemory"));
    return request(functioncode::kMemory,
                   QByteArray(1, '\1') + memoryAddress(StartMemoryAddress) + static_cast<char>(Count) +
                       DigitalVals().bytes.left(Count),
                   Count, true);
}

bool clsModbus::MakeCRC16(QByteArray& bytBuff, qint32 lngByteCnt)
{
    if (bytBuff.size() < lngByteCnt + 2)
        bytBuff.append(lngByteCnt + 2 - bytBuff.size(), '\0');
    const quint16 crc = modbusframe::crc16(bytBuff, lngByteCnt);
    bytBuff[lngByteCnt] = static_cast<char>(crc & 0xFF);
    bytBuff[lngByteCnt + 1] = static_cast<char>(crc >> 8);
    return true;
}

QByteArray clsModbus::IntToByte(qint16 intData)
{
    const auto bits = static_cast<quint16>(intData);
    return QByteArray(1, static_cast<char>(bits >> 8)) + static_cast<char>(bits & 0xFF);
}

qint16 clsModbus::ByteToInt(const QByteArray& ByteData, qint32 Offset)
{
    const IndexedBytes bytes{0, ByteData};
    return static_cast<qint16>(bytes.at(Offset) << 8 | bytes.at(Offset + 1));
}

float clsModbus::IntToFloat(qint16 intValue, qint16 intDot)
{
    static constexpr float kFactors[] = {0.1F, 0.01F, 0.001F, 0.0001F};
    if (intDot < 1 || intDot > 4)
        return intValue;
    return static_cast<float>(static_cast<double>(intValue) * static_cast<double>(kFactors[intDot - 1]));
}

QString clsModbus::ChangeMsg(const QString& strCommand)
{
    static constexpr const char* kMnemonics[] = {
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT", "LF",  "VT",  "FF", "CR", "SO", "SI",
        "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM", "SUB", "ESC", "FS", "GS", "RS", "US"};
    QString shown;
    for (const QChar c : strCommand) {
        if (c.unicode() > 0xFF)
            shown += QStringLiteral("<\?\?\?>");
        else if (c.unicode() > 31)
            shown += c;
        else
            shown += QStringLiteral("<%1>").arg(QLatin1String(kMnemonics[c.unicode()]));
    }
    return shown;
}
