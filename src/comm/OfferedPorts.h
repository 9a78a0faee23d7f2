#pragma once

#include "ComPorts.h"

#include <QMetaType>
#include <QString>
#include <QVector>

class clsLibrary;

// What is chosen as port: COMn, or a device or serial server by its name.
struct PortChoice
{
    int number = 0;  // n of COMn; 0: none is chosen
    QString adapter; // what COMn was when it was seen (ComPort::identity); empty: whatever it is
    QString name;    // typed in place of COMn; empty: COMn counts

    bool operator==(const PortChoice&) const = default;
    // Of a typed text: "COM3" for that port, else a name.
    static PortChoice of(const QString& text);
};
Q_DECLARE_METATYPE(PortChoice)

// The serial ports that the communication settings offer: those of the machine, those that are configured, and the
// chosen one even where it is neither. ports and library are kept by reference.
class OfferedPorts
{
public:
    OfferedPorts(const platform::ComPorts& ports, clsLibrary& library);

    // Looks what is there now. The choice stays with its adapter when that gets another number; its number becomes 0
    // when the adapter has gone and another one has the number. Whether anything else is offered than before.
    bool look(PortChoice& choice);

    const QVector<platform::ComPort>& list() const { return m_list; } // by number, as of the last look
    // "COM1", with what can be told of it.
    QString text(const platform::ComPort& port) const;
    // Why COMn cannot be used and what to do, as far as that can be said without opening it; else empty.
    QString error(int number) const;

    // Stores that COMn is the adapter that it stands for now, where nothing says yet what it is. For an adapter with a
    // lasting name only.
    void remember(int number);

private:
    static void follow(const QVector<platform::ComPort>& now, PortChoice& choice);

    const platform::ComPorts& m_ports;
    clsLibrary& m_library;
    QVector<platform::ComPort> m_list;
};
