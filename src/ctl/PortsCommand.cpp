#include "PortsCommand.h"

#include "TextTable.h"

#include <QSet>

CommandResult listPorts(const platform::ComPorts& ports)
{
    TextTable table({QStringLiteral("Port"), QStringLiteral("Device"), QStringLiteral("Description")});
    QSet<QString> named;
    int number = 0;
    for (const platform::ComPort& port : ports.first(platform::kMaxComNumber)) {
        ++number;
        if (port.device.isEmpty())
            continue;
        named.insert(port.device);
        table.add({QStringLiteral("COM%1").arg(number), port.device, port.description});
    }
    bool any = !named.isEmpty();
    for (const platform::ComPort& port : ports.installed()) {
        if (!named.contains(port.device))
            table.add({QStringLiteral("-"), port.device, port.description});
        any = true;
    }
    if (any)
        return CommandResult::done(table.text().toUtf8());
    return noPorts();
}

CommandResult noPorts()
{
    return CommandResult::failed(ExitStatus::NoAnswer,
                                 QStringLiteral("this machine has no serial port; connect an adapter, or name a device "
                                                "with the environment variable VORLANT_COM1"));
}
