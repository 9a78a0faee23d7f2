#pragma once

#include <QByteArray>

// The two wire forms of a Modbus serial frame and their check values ("MODBUS over Serial Line", V1.02, 2.5).
namespace modbusframe {

constexpr int kMaxWireBytes = 513;    // longest frame on the line, ASCII form
constexpr int kMaxEncodedBytes = 256; // longest binary frame with LRC that has an ASCII form
constexpr int kMinAsciiBytes = 9;
constexpr int kMinRtuBytes = 4;

// CRC-16 of the first count bytes (reflected polynomial 0x8005, start 0xFFFF); its low byte goes on the line first.
quint16 crc16(const QByteArray& bytes, qsizetype count);

// Two's complement of the sum of the first count bytes.
quint8 lrc(const QByteArray& bytes, qsizetype count);

// ":", two upper-case digits a byte, CR LF. Empty for less than 1 or more than 256 bytes.
QByteArray toAscii(const QByteArray& binary);

// The bytes of an ASCII frame; empty when it is malformed (even or too long, no colon, other digits than 0-9 A-F).
QByteArray fromAscii(const QByteArray& ascii);

constexpr int kAsciiMarks = 3; // colon, carriage return, line feed

// Bytes on the line of a binary frame of that many, its check value included.
constexpr qsizetype wireBytes(qsizetype frameBytes, bool ascii)
{
    return ascii ? 2 * (frameBytes + 1) + kAsciiMarks : frameBytes + 2;
}

// And back: bytes of the binary frame with its check value.
constexpr qsizetype checkedBytes(qsizetype wireBytes, bool ascii)
{
    return ascii ? (wireBytes - kAsciiMarks) / 2 : wireBytes;
}

// Whether the bytes on the line are a whole and sound frame of this slave that refuses this function.
bool isRefusal(const QByteArray& wire, int slave, int functionCode, bool ascii);

// The wire form of a binary frame (address, function, data), with its check value.
QByteArray toWire(const QByteArray& frame, bool ascii);

} // namespace modbusframe
