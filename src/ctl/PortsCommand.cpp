#include "PortsCommand.h"

#include "TextTable.h"

CommandResult listPorts(const platform::ComPorts& ports)
{
    const QVector<platform::ComPort> all = ports.all();
    if (all.isEmpty())
        return noPorts();
    TextTable table({QStringLiteral("Port"), QStringLiteral("Device"), QStringLiteral("Description"),
                     QStringLiteral("Serial number"), QStringLiteral("Lasting name")});
    for (const platform::ComPort& port : all) {
        table.add({port.number == 0 ? QStringLiteral("-") : platform::ComPorts::nameOf(port.number), port.device,
                   port.isPluggedIn ? port.description : QStringLiteral("not plugged in"), port.serialNumber,
                   port.lastingName});
    }
    return CommandResult::done(table.text().toUtf8());
}

CommandResult noPorts()
{
    return CommandResult::failed(ExitStatus::NoAnswer,
                                 QStringLiteral("this machine has no serial port; connect an adapter, or name a device "
                                                "with the environment variable VORLANT_COM1"));
}
