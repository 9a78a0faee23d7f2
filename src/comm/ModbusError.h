#pragma once

#include <QString>
#include <stdexcept>

// A bad argument given to clsModbus. Reply failures are no errors of this kind: see clsModbus::ErrorCode.
class ModbusError : public std::runtime_error
{
public:
    static constexpr qint32 kNumber = static_cast<qint32>(0x800403EA);

    ModbusError(const QString& description, const QString& operation)
        : std::runtime_error(description.toStdString()), m_description(description),
          m_source(QStringLiteral("clsModBus::") + operation)
    {}

    qint32 number() const { return kNumber; }
    QString description() const { return m_description; }
    QString source() const { return m_source; } // "clsModBus::" and the operation's name

private:
    QString m_description;
    QString m_source;
};
