#include "ComPorts.h"

#include <QRegularExpression>
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

// Natural order: "ttyS9" before "ttyS10", whatever the locale.
bool comesBefore(const QString& a, const QString& b)
{
    const auto digitsFrom = [](const QString& text, qsizetype from) {
        qsizetype end = from;
        while (end < text.size() && text[end].isDigit())
            ++end;
        return text.mid(from, end - from);
    };
    for (qsizetype i = 0; i < a.size() && i < b.size(); ++i) {
        if (a[i].isDigit() && b[i].isDigit()) {
            const QString left = digitsFrom(a, i);
            const QString right = digitsFrom(b, i);
            if (left.size() != right.size())
                return left.size() < right.size();
        }
        if (a[i] != b[i])
            return a[i] < b[i];
    }
    return a.size() < b.size();
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
    std::sort(ports.begin(), ports.end(), [](const ComPort& a, const ComPort& b) {
        if (isUsb(a.device) != isUsb(b.device))
            return isUsb(a.device);
        return comesBefore(a.device, b.device);
    });
    return ports;
}

int ComPorts::numberOf(const QString& name)
{
    static const QRegularExpression form(QStringLiteral("\\ACOM([1-9][0-9]?)\\z"),
                                         QRegularExpression::CaseInsensitiveOption);
    return form.match(name).captured(1).toInt();
}

QString ComPorts::deviceForThisRun(int number) const
{
    const QString device = m_assigned.value(number);
    return device.isEmpty() ? m_environment.value(QStringLiteral("VORLANT_") + keyOf(number)) : device;
}

bool ComPorts::isNamedForThisRun(int number) const
{
    return !deviceForThisRun(number).isEmpty();
}

QString ComPorts::namedDevice(int number) const
{
    QString device = deviceForThisRun(number);
    if (device.isEmpty() && m_settingsLookup)
        device = m_settingsLookup(keyOf(number));
    return device;
}

QString ComPorts::device(int number) const
{
    const QString named = namedDevice(number);
    if (!named.isEmpty())
        return named;
    const QVector<ComPort> ports = installed();
    return number >= 1 && number <= ports.size() ? ports[number - 1].device : QString();
}

ComPort ComPorts::resolve(int number) const
{
    return resolveAmong(installed(), number);
}

QVector<ComPort> ComPorts::first(int count) const
{
    const QVector<ComPort> ports = installed();
    QVector<ComPort> named;
    for (int number = 1; number <= count; ++number)
        named << resolveAmong(ports, number);
    return named;
}

ComPort ComPorts::resolveAmong(const QVector<ComPort>& ports, int number) const
{
    const QString device = namedDevice(number);
    if (device.isEmpty())
        return number >= 1 && number <= ports.size() ? ports[number - 1] : ComPort{};
    const auto known = std::find_if(ports.cbegin(), ports.cend(), [&](const ComPort& p) { return p.device == device; });
    return known == ports.cend() ? ComPort{device, QString()} : *known;
}

} // namespace platform
