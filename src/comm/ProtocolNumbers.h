#pragma once

// What the requests of a controller are called by ("MODBUS Application Protocol" V1.1b3, 6; 66, 70 and 71 are the
// controllers' own), and the reference numbers that stand for address 0 of each table.
namespace functioncode {

constexpr int kReadCoils = 1;
constexpr int kReadDiscreteInputs = 2;
constexpr int kReadHoldingRegisters = 3;
constexpr int kReadInputRegisters = 4;
constexpr int kWriteCoil = 5;
constexpr int kWriteRegister = 6;
constexpr int kWriteCoils = 15;
constexpr int kWriteRegisters = 16;
constexpr int kMemory = 66; // reads or writes, by the first byte of its data
constexpr int kReadFloats = 70;
constexpr int kWriteFloats = 71;

// A refusal repeats the function code with this bit set; the exception code follows.
constexpr int kExceptionBit = 0x80;
constexpr bool isException(int functionCode)
{
    return functionCode > kExceptionBit;
}

} // namespace functioncode

// Why a controller refuses; all of 1 to 255 can come (the same source, 7).
namespace exceptioncode {

constexpr int kIllegalFunction = 1;
constexpr int kIllegalDataAddress = 2;
constexpr int kIllegalDataValue = 3;
constexpr int kLast = 255;
constexpr bool contains(int code)
{
    return code >= 1 && code <= kLast;
}

} // namespace exceptioncode

namespace reference {

constexpr int kCoil = 1;
constexpr int kDiscreteInput = 10001;
constexpr int kInputRegister = 30001;
constexpr int kHoldingRegister = 40001;
constexpr int kFloat = 50001;
constexpr int kTableSize = 10000;

} // namespace reference
