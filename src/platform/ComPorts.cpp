#include "ComPorts.h"

#include <QCollator>
#include <QLocale>
#include <QSerialPortInfo>

#include <algorithm>

namespace platform {

namespace {

bool isUsb(const QString& device)
{
    return device.contains(QStringLiteral("ttyUSB")) || device.contains(QStringLiteral("ttyACM"));
}

QVector<ComPort> machinePorts()
{
    QVector<ComPort> ports;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : infos) {
        QString description = info.description();
        if (!info.manufacturer().isEmpty())
            description += QStringLiteral(" (%1)").arg(info.manufacturer());
        ports.append({info.systemLocation(), description.trimmed()});
    }
    return ports;
}

QString keyOf(int number)
{
    return QStringLiteral("COM%1").arg(number);
}

} // namespace

ComPorts::ComPorts(const QProcessEnvironment& environment, SettingsLookup settingsLookup, Enumerate enumerate)
    : m_environment(environment), m_settingsLookup(std::move(settingsLookup)),
      m_enumerate(enumerate ? std::move(enumerate) : machinePorts)
{}

void ComPorts::assign(int number, const QString& device)
{
    m_assigned.insert(number, device);
}

QVector<ComPort> ComPorts::installed() const
{
    QVector<ComPort> ports = m_enumerate();
    QCollator order(QLocale::c());
    order.setNumericMode(true);
    std::sort(ports.begin(), ports.end(), [&order](const ComPort& a, const ComPort& b) {
        if (isUsb(a.device) != isUsb(b.device))
            return isUsb(a.device);
        return order.compare(a.device, b.device) < 0;
    });
    return ports;
}

ComPort ComPorts::resolve(int number) const
{
    QString device = m_assigned.value(number);
    if (device.isEmpty())
        device = m_environment.value(QStringLiteral("VORLANT_") + keyOf(number));
    if (device.isEmpty() && m_settingsLookup)
        device = m_settingsLookup(keyOf(number));
    const QVector<ComPort> ports = installed();
    if (device.isEmpty())
        return number >= 1 && number <= ports.size() ? ports[number - 1] : ComPort{};
    const auto known = std::find_if(ports.cbegin(), ports.cend(), [&](const ComPort& p) { return p.device == device; });
    return known == ports.cend() ? ComPort{device, QString()} : *known;
}

} // namespace platform
