#include "clsModbus.h"

#include "ModbusFrame.h"
#include "ProtocolNumbers.h"

using namespace functioncode;

// clsModbus as a slave: a request becomes an event, the handler's answer a response.

namespace {

// Items of one request ("MODBUS Application Protocol" V1.1b3, 6; registers to write as the controllers take them).
constexpr int kMaxBitsRead = 2000;
constexpr int kMaxRegistersRead = 125;
constexpr int kMaxCoilsWritten = 1968;
constexpr int kMaxRegistersWritten = 120;

bool isUserDefined(int functionCode)
{
    return (functionCode >= 65 && functionCode <= 72) || (functionCode >= 100 && functionCode <= 110);
}

bool within(int value, int last)
{
    return value >= 1 && value <= last;
}

std::vector<qint16> registersFrom(const QByteArray& frame, int offset, int count)
{
    std::vector<qint16> values(1, 0); // index 1 is the first
    for (int i = 0; i < count; ++i)
        values.push_back(clsModbus::ByteToInt(frame, offset + 2 * i));
    return values;
}

} // namespace

void clsModbus::interpretRequest(const QByteArray& frame)
{
    const int functionCode = static_cast<quint8>(frame[1]);
    bool supported = false;
    Q_EMIT FunctionCodeSupported(functionCode, supported);
    const int dataLength = static_cast<int>(frame.size()) - 2;
    if (functionCode >= kExceptionBit)
        return; // no response has room for it
    if (!supported)
        refuse(functionCode, exceptioncode::kIllegalFunction);
    else if (functionCode >= kReadCoils && functionCode <= kReadInputRegisters)
        readRequest(functionCode, frame);
    else if (functionCode == kWriteCoil || functionCode == kWriteRegister || functionCode == kWriteCoils ||
             functionCode == kWriteRegisters)
        writeRequest(functionCode, frame);
    else if (isUserDefined(functionCode))
        Q_EMIT UserDefinedFunction(functionCode, frame, dataLength);
    else
        Q_EMIT PublicFunction(functionCode, frame, dataLength);
}

void clsModbus::readRequest(int functionCode, const QByteArray& frame)
{
    const int start = ByteToInt(frame, 2);
    const int quantity = ByteToInt(frame, 4);
    if (frame.size() < 6 || !within(quantity, functionCode <= kReadDiscreteInputs ? kMaxBitsRead : kMaxRegistersRead)) {
        refuse(functionCode, exceptioncode::kIllegalDataValue);
        return;
    }
    bool illegal = false;
    switch (functionCode) {
    case kReadCoils:
        Q_EMIT ReadCoils(start, quantity, illegal);
        break;
    case kReadDiscreteInputs:
        Q_EMIT ReadDiscreteInputs(start, quantity, illegal);
        break;
    case kReadHoldingRegisters:
        Q_EMIT ReadHoldingRegisters(start, quantity, illegal);
        break;
    default:
        Q_EMIT ReadInputRegisters(start, quantity, illegal);
        break;
    }
    if (illegal)
        refuse(functionCode, exceptioncode::kIllegalDataAddress);
}

void clsModbus::writeRequest(int functionCode, const QByteArray& frame)
{
    const int start = ByteToInt(frame, 2);
    const int value = static_cast<quint16>(ByteToInt(frame, 4));
    const int dataLength = static_cast<int>(frame.size()) - 2;
    const int byteCount = frame.size() > 6 ? static_cast<quint8>(frame[6]) : 0;
    bool valid = dataLength >= 4;
    if (functionCode == kWriteCoil)
        valid = valid && (value == 0 || value == 0xFF00);
    else if (functionCode == kWriteCoils)
        valid = within(value, kMaxCoilsWritten) && byteCount == (value + 7) / 8 && dataLength == byteCount + 5;
    else if (functionCode == kWriteRegisters)
        valid = within(value, kMaxRegistersWritten) && byteCount == 2 * value && dataLength == byteCount + 5;
    if (!valid) {
        refuse(functionCode, exceptioncode::kIllegalDataValue);
        return;
    }
    bool illegal = false;
    if (functionCode == kWriteCoil)
        Q_EMIT WriteSingleCoil(start, value, illegal);
    else if (functionCode == kWriteRegister)
        Q_EMIT WriteSingleRegister(start, static_cast<qint16>(value), illegal);
    else if (functionCode == kWriteCoils)
        Q_EMIT WriteMultipleCoils(start, value, byteCount, frame.mid(7), illegal);
    else
        Q_EMIT WriteMultipleRegisters(start, value, byteCount, registersFrom(frame, 7, value), illegal);
    if (illegal)
        refuse(functionCode, exceptioncode::kIllegalDataAddress);
}

void clsModbus::refuse(int functionCode, int exceptionCode)
{
    ErrorResponse(functionCode, exceptionCode);
    Q_EMIT MakeErrorResponse(functionCode, exceptionCode);
}

void clsModbus::respond(int functionCode, const QByteArray& data)
{
    m_request = QByteArray(1, static_cast<char>(m_slaveAddress)) + static_cast<char>(functionCode) + data;
    m_wire = modbusframe::toWire(m_request, isAscii());
    m_recvSize = 0;
}

void clsModbus::respondRegisters(int functionCode, int byteCount, const std::vector<qint16>& values)
{
    QByteArray data(1, static_cast<char>(byteCount));
    for (int i = 1; i <= byteCount / 2; ++i)
        data += IntToByte(values.at(static_cast<size_t>(i)));
    respond(functionCode, data);
}

void clsModbus::ResponsReadCoils(int ByteCount, const IndexedBytes& CoilStatus)
{
    QByteArray data(1, static_cast<char>(ByteCount));
    for (int i = 1; i <= ByteCount; ++i)
        data += static_cast<char>(CoilStatus.at(i));
    respond(kReadCoils, data);
}

void clsModbus::ResponsReadDiscreteInputs(int ByteCount, const IndexedBytes& InputsStatus)
{
    ResponsReadCoils(ByteCount, InputsStatus);
    respond(kReadDiscreteInputs, m_request.mid(2));
}

void clsModbus::ResponsReadHoldingRegisters(int ByteCount, const std::vector<qint16>& RegisterValue)
{
    respondRegisters(kReadHoldingRegisters, ByteCount, RegisterValue);
}

void clsModbus::ResponsReadInputRegisters(int ByteCount, const std::vector<qint16>& InputsRegisters)
{
    respondRegisters(kReadInputRegisters, ByteCount, InputsRegisters);
}

void clsModbus::ResponsWriteSingleCoil(qint16 OutputAddress, qint16 OutputValue)
{
    respond(kWriteCoil, IntToByte(OutputAddress) + IntToByte(OutputValue));
}

void clsModbus::ResponsWriteSingleRegister(qint16 RegisterAddress, qint16 RegisterValue)
{
    respond(kWriteRegister, IntToByte(RegisterAddress) + IntToByte(RegisterValue));
}

void clsModbus::ResponsWriteMultipleCoils(qint16 StartingAddress, qint16 Quantity)
{
    respond(kWriteCoils, IntToByte(StartingAddress) + IntToByte(Quantity));
}

void clsModbus::ResponsWriteMultipleRegisters(qint16 StartingAddress, qint16 Quantity)
{
    respond(kWriteRegisters, IntToByte(StartingAddress) + IntToByte(Quantity));
}

void clsModbus::ErrorResponse(int FunctionCode, int ExceptionCode)
{
    respond(FunctionCode + kExceptionBit, QByteArray(1, static_cast<char>(ExceptionCode)));
}

void clsModbus::ResponsUserDefined(int FunctionCode, const QByteArray& Data)
{
    respond(FunctionCode, Data);
}
