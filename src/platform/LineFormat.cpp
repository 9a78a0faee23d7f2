#include "LineFormat.h"

#include "Numbers.h"

#include <QStringList>

namespace platform {

namespace {

std::optional<QSerialPort::Parity> parityOf(const QString& letter)
{
    static const QString kLetters = QStringLiteral("NEOMS");
    static constexpr QSerialPort::Parity kParities[] = {QSerialPort::NoParity, QSerialPort::EvenParity,
                                                        QSerialPort::OddParity, QSerialPort::MarkParity,
                                                        QSerialPort::SpaceParity};
    const auto index = letter.size() == 1 ? kLetters.indexOf(letter.toUpper()) : -1;
    return index < 0 ? std::nullopt : std::optional(kParities[index]);
}

std::optional<QSerialPort::StopBits> stopBitsOf(const QString& text)
{
    if (text == u"1")
        return QSerialPort::OneStop;
    if (text == u"1.5")
        return QSerialPort::OneAndHalfStop;
    return text == u"2" ? std::optional(QSerialPort::TwoStop) : std::nullopt;
}

} // namespace

std::optional<LineFormat> parseLineFormat(const QString& text)
{
    const QStringList fields = text.split(u',');
    if (fields.size() != 3)
        return {};
    const auto parity = parityOf(fields[0].trimmed());
    const auto bits = parseInt32(fields[1].trimmed());
    const auto stop = stopBitsOf(fields[2].trimmed());
    if (!parity || !bits || *bits < 5 || *bits > 8 || !stop)
        return {};
    return LineFormat{*parity, static_cast<QSerialPort::DataBits>(*bits), *stop};
}

} // namespace platform
