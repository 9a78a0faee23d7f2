#include "ComPorts.h"

#include "ServerAddress.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSerialPortInfo>

#include <algorithm>

namespace platform {

namespace {

const QString kLastingNames = QStringLiteral("/dev/serial/by-id");

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
        ports.append({info.systemLocation(), description.trimmed(), info.serialNumber()});
    }
    return ports;
}

// To look opens ports of the old kind, which moves their lines: only where something has come or gone since the last
// look, or just before it.
class MachinePorts
{
public:
    QVector<ComPort> operator()()
    {
        const QDateTime changed =
            std::max(QFileInfo(QStringLiteral("/dev")).lastModified(), QFileInfo(kLastingNames).lastModified());
        if (changed != m_changed || changed.msecsTo(QDateTime::currentDateTime()) < kSettlingMs)
            m_ports = machinePorts();
        m_changed = changed;
        return m_ports;
    }

private:
    static constexpr qint64 kSettlingMs = 5000;

    QVector<ComPort> m_ports;
    QDateTime m_changed;
};

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

// Lasting names by the devices that they stand for now.
QHash<QString, QString> lastingNames(const QString& folder)
{
    QHash<QString, QString> names;
    const auto links = QDir(folder).entryInfoList(QDir::Files | QDir::System, QDir::Name);
    for (const QFileInfo& link : links) {
        const QString device = link.canonicalFilePath();
        if (!device.isEmpty() && !names.contains(device))
            names.insert(device, link.filePath());
    }
    return names;
}

} // namespace

ComPorts::ComPorts(const QProcessEnvironment& environment, SettingsLookup settingsLookup, Enumerate enumerate,
                   const QString& lastingFolder)
    : m_environment(environment), m_settingsLookup(std::move(settingsLookup)),
      m_enumerate(enumerate ? std::move(enumerate) : MachinePorts()),
      m_lastingFolder(lastingFolder.isEmpty() ? kLastingNames : lastingFolder)
{}

void ComPorts::assign(int number, const QString& device)
{
    m_assigned.insert(number, device);
}

QVector<ComPort> ComPorts::installed() const
{
    QVector<ComPort> ports = m_enumerate();
    const QHash<QString, QString> names = lastingNames(m_lastingFolder);
    for (ComPort& port : ports)
        port.lastingName = names.value(realName(port.device));
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

QString ComPorts::nameOf(int number)
{
    return QStringLiteral("COM%1").arg(number);
}

QString ComPorts::realName(const QString& device)
{
    return QFileInfo(QDir(QStringLiteral("/dev")).absoluteFilePath(device)).canonicalFilePath();
}

QString ComPorts::deviceForThisRun(int number) const
{
    const QString device = m_assigned.value(number);
    return device.isEmpty() ? m_environment.value(QStringLiteral("VORLANT_") + nameOf(number)) : device;
}

bool ComPorts::isNamedForThisRun(int number) const
{
    return !deviceForThisRun(number).isEmpty();
}

QString ComPorts::configuredName(int number) const
{
    QString name = deviceForThisRun(number);
    if (name.isEmpty() && m_settingsLookup)
        name = m_settingsLookup(nameOf(number));
    return name;
}

QString ComPorts::deviceOf(const QString& name) const
{
    const QString device = name.startsWith(m_lastingFolder + u'/') ? realName(name) : QString();
    return device.isEmpty() ? name : device;
}

QString ComPorts::device(int number) const
{
    const QString name = configuredName(number);
    return name.isEmpty() ? resolve(number).device : deviceOf(name);
}

ComPort ComPorts::resolve(int number) const
{
    const QVector<ComPort> ports = all();
    const auto found = std::find_if(ports.cbegin(), ports.cend(),
                                    [&](const ComPort& port) { return number > 0 && port.number == number; });
    return found == ports.cend() ? ComPort{} : *found;
}

QVector<ComPort> ComPorts::all() const
{
    QVector<ComPort> others = installed();
    const QVector<ComPort> machine = others;
    QMap<int, ComPort> ports;
    for (int number = 1; number <= kMaxComNumber; ++number) {
        const QString name = configuredName(number);
        if (name.isEmpty())
            continue;
        ComPort port = named(name, machine);
        others.removeIf([&](const ComPort& other) { return other.device == port.device; });
        port.device = deviceOf(name);
        port.configured = name;
        port.number = number;
        ports.insert(number, port);
    }
    int number = 0;
    for (ComPort& port : others) {
        do
            ++number;
        while (ports.contains(number));
        port.number = number <= kMaxComNumber ? number : 0;
        ports.insert(number, port);
    }
    return ports.values();
}

// A name may be one of several of a device.
ComPort ComPorts::named(const QString& name, const QVector<ComPort>& installed) const
{
    const QString device = realName(name);
    const auto known = std::find_if(installed.cbegin(), installed.cend(), [&](const ComPort& port) {
        return port.device == name || (!device.isEmpty() && realName(port.device) == device);
    });
    if (known != installed.cend())
        return *known;
    ComPort port{name};
    if (name.startsWith(m_lastingFolder + u'/'))
        port.lastingName = name;
    port.isPluggedIn = !device.isEmpty() || ServerAddress::isMeant(name);
    return port;
}

} // namespace platform
