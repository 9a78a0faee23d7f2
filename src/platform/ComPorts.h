#pragma once

#include <QHash>
#include <QProcessEnvironment>
#include <QString>
#include <QVector>
#include <functional>

namespace platform {

constexpr int kMaxComNumber = 99; // COM1 to COM99

// A serial port of this machine, or one that is configured.
struct ComPort
{
    QString device;            // "/dev/ttyUSB0", or as it is configured; empty: there is no such port
    QString description = {};  // "USB serial adapter (its maker)", may be empty
    QString serialNumber = {}; // of the adapter, may be empty
    QString lastingName = {};  // "/dev/serial/by-id/...", wherever the adapter is plugged in; may be empty
    QString configured = {};   // by what name; empty: it is not
    int number = 0;            // n of COMn; 0: there is no number left for it
    bool isPluggedIn = true;   // a serial server counts as plugged in

    bool operator==(const ComPort&) const = default;
    // What stays the same wherever it is plugged in, as far as that is known.
    const QString& identity() const
    {
        return !configured.isEmpty() ? configured : lastingName.isEmpty() ? device : lastingName;
    }
};

// Which device COMn is: the environment variable VORLANT_COMn when set; else the key COMn of section "Ports" of the
// main settings file (asked through settingsLookup, read-only). The serial ports of the machine that none of these
// names have the numbers that are left, USB adapters first, in natural name order. So no port has two numbers, unless
// it is named twice, and one that is named keeps its number, plugged in or not.
class ComPorts
{
public:
    using SettingsLookup = std::function<QString(const QString& key)>; // "" when the key is missing
    using Enumerate = std::function<QVector<ComPort>()>;

    // enumerate: the machine's ports in any order, without lasting names (default: the system's list).
    // lastingFolder: has links to adapters by their lasting names (default: the system's).
    explicit ComPorts(const QProcessEnvironment& environment, SettingsLookup settingsLookup = {},
                      Enumerate enumerate = {}, const QString& lastingFolder = {});

    // number: 1 and up. The device alone is cheap when it is named; all else needs a look at all ports. A lasting name
    // gives the device that the adapter has now.
    QString device(int number) const;
    ComPort resolve(int number) const;
    // What is plugged in or named, with one look at the machine: by number, those without one at the end.
    QVector<ComPort> all() const;

    // Whether the command line or the environment names the device of COMn.
    bool isNamedForThisRun(int number) const;

    // n of "COMn", 1 to 99, in large or small letters; 0 for any other name.
    static int numberOf(const QString& name);
    static QString nameOf(int number); // "COMn"
    // The one name of a device that may have several; empty when it is not there.
    static QString realName(const QString& device);

    // Makes COMn stand for a device, before every other rule (a command line option).
    void assign(int number, const QString& device);

private:
    QString deviceForThisRun(int number) const;
    QString configuredName(int number) const;
    QString deviceOf(const QString& name) const;
    QVector<ComPort> installed() const;
    ComPort named(const QString& name, const QVector<ComPort>& installed) const;

    QProcessEnvironment m_environment;
    SettingsLookup m_settingsLookup;
    Enumerate m_enumerate;
    QString m_lastingFolder;
    QHash<int, QString> m_assigned;
};

} // namespace platform
