#pragma once

#include <QHash>
#include <QProcessEnvironment>
#include <QString>
#include <QVector>
#include <functional>

namespace platform {

constexpr int kMaxComNumber = 99; // COM1 to COM99

// A serial port of this machine.
struct ComPort
{
    QString device;      // "/dev/ttyUSB0"; empty: there is no such port
    QString description; // "FT232R USB UART (FTDI)", may be empty
};

// Which device COMn is: the environment variable VORLANT_COMn when set; else the key COMn of section "Ports" of the
// main settings file (asked through settingsLookup, read-only); else the n-th serial port of the machine, USB adapters
// first, in natural name order.
class ComPorts
{
public:
    using SettingsLookup = std::function<QString(const QString& key)>; // "" when the key is missing
    using Enumerate = std::function<QVector<ComPort>()>;

    // enumerate: the machine's ports in any order (default: the system's list).
    explicit ComPorts(const QProcessEnvironment& environment, SettingsLookup settingsLookup = {},
                      Enumerate enumerate = {});

    // number: 1 and up. The device alone is cheap when it is named; the description needs a look at all ports.
    QString device(int number) const;
    ComPort resolve(int number) const;
    QVector<ComPort> first(int count) const; // COM1 to COMcount, with one look at the machine

    // The machine's ports, USB adapters first, in natural name order.
    QVector<ComPort> installed() const;

    // Whether the command line or the environment names the device of COMn.
    bool isNamedForThisRun(int number) const;

    // n of "COMn", 1 to 99, in large or small letters; 0 for any other name.
    static int numberOf(const QString& name);

    // Makes COMn stand for a device, before every other rule (a command line option).
    void assign(int number, const QString& device);

private:
    QString deviceForThisRun(int number) const;
    QString namedDevice(int number) const;
    ComPort resolveAmong(const QVector<ComPort>& ports, int number) const;

    QProcessEnvironment m_environment;
    SettingsLookup m_settingsLookup;
    Enumerate m_enumerate;
    QHash<int, QString> m_assigned;
};

} // namespace platform
