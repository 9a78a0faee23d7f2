#pragma once

#include <QSerialPort>
#include <QString>

#include <optional>

namespace platform {

// How one character goes over a serial line, as settings and command lines write it: parity (N E O M S), data bits
// (5 to 8), stop bits (1, 1.5 or 2), such as "N,8,1".
struct LineFormat
{
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

// Blanks around a field and small letters do not matter. Empty when the text is no such format.
std::optional<LineFormat> parseLineFormat(const QString& text);

} // namespace platform
