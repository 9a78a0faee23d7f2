#include "OfferedPorts.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

using platform::ComPort;
using platform::ComPorts;

namespace {

auto withNumber(const QVector<ComPort>& ports, int number)
{
    return std::find_if(ports.cbegin(), ports.cend(), [&](const ComPort& port) { return port.number == number; });
}

} // namespace

PortChoice PortChoice::of(const QString& text)
{
    PortChoice choice;
    const QString name = text.trimmed();
    choice.number = ComPorts::numberOf(name);
    if (choice.number == 0)
        choice.name = name;
    return choice;
}

OfferedPorts::OfferedPorts(const ComPorts& ports, clsLibrary& library) : m_ports(ports), m_library(library) {}

bool OfferedPorts::look(PortChoice& choice)
{
    QVector<ComPort> now = m_ports.all();
    now.removeIf([](const ComPort& port) { return port.number == 0; });
    follow(now, choice);
    if (choice.number > 0 && withNumber(now, choice.number) == now.cend()) {
        ComPort missing;
        missing.number = choice.number;
        missing.isPluggedIn = false;
        now.insert(std::find_if(now.cbegin(), now.cend(), [&](const ComPort& p) { return p.number > missing.number; }),
                   missing);
    }
    return std::exchange(m_list, now) != now;
}

void OfferedPorts::follow(const QVector<ComPort>& now, PortChoice& choice)
{
    const auto same = withNumber(now, choice.number);
    if (choice.adapter.isEmpty() && same != now.cend())
        choice.adapter = same->identity();
    if (choice.adapter.isEmpty() || (same != now.cend() && same->identity() == choice.adapter))
        return;
    const auto moved =
        std::find_if(now.cbegin(), now.cend(), [&](const ComPort& port) { return port.identity() == choice.adapter; });
    if (moved != now.cend())
        choice.number = moved->number;
    else if (same != now.cend())
        choice.number = 0;
}

QString OfferedPorts::text(const ComPort& port) const
{
    QStringList parts{ComPorts::nameOf(port.number)};
    if (!port.isPluggedIn)
        parts << u'(' + m_library.tranStr(QStringLiteral("not plugged in")) + u')';
    parts << port.device << port.description << port.serialNumber;
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  "));
}

QString OfferedPorts::error(int number) const
{
    const auto tran = [this](const char* text) { return m_library.tranStr(QLatin1String(text)); };
    const auto found = withNumber(m_list, number);
    const bool hasDevice = found != m_list.cend() && !found->device.isEmpty();
    if (hasDevice && found->isPluggedIn)
        return {};
    if (hasDevice)
        return tran("COM%1 (%2) cannot be opened").arg(number).arg(found->device) + QStringLiteral(": ") +
               tran("there is no such device; plug the adapter in or choose another port");
    if (std::all_of(m_list.cbegin(), m_list.cend(), [](const ComPort& port) { return port.device.isEmpty(); }))
        return tran("no serial port was found; plug an adapter in, or type the name of a device or serial server");
    if (number == 0)
        return tran("choose a port, or type the name of a device or serial server");
    return ComPorts::nameOf(number) + QStringLiteral(": ") +
           tran("there is no such port; plug the adapter in or choose another port");
}

void OfferedPorts::remember(int number)
{
    const ComPort port = m_ports.resolve(number);
    if (port.lastingName.isEmpty() || !port.configured.isEmpty())
        return;
    Context& context = m_library.context();
    clsINI ini = mainSettings(context);
    IniBatch batch(context);
    ini.PutIniData(kPortsSection, ComPorts::nameOf(number), port.lastingName);
    batch.commitLogged();
}
