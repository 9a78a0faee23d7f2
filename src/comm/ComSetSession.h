#pragma once

#include "ControllerScan.h"
#include "ModelDetection.h"
#include "RecentEntries.h"
#include "uclComm.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

class ComSetOwner;
class clsLibrary;

namespace platform {
class ComPorts;
struct ComPort;
} // namespace platform

// What the fields of the communication settings hold.
struct ComSetFields
{
    int portPosition = 0; // COMn at position n - 1; -1: the port of the settings is not in the list
    QString portName;     // a device or serial server that was typed, in place of COMn; empty: none
    QString speedText;    // "9600bps"
    QString chara;        // "N,8,1"
    QString timeOutText;  // milliseconds; empty: the seconds of the settings
    bool ascii = false;
    QString slaveText;
    int modelPosition = -1; // in the catalogue, from 0
    QString modelString;
};

// The rules of the communication settings, without a window: what the fields offer and mean, the detection of the
// model, the check on OK and what OK applies. It has a link of its own, which holds the port while the settings are
// open, and closes the main window's meanwhile.
//
// Order of calls: open; any of detect, pickModel and confirm; after a successful confirm apply; close (also done when
// the session ends). All parts are kept by reference and must outlive the session.
class ComSetSession : public QObject
{
    Q_OBJECT

public:
    static constexpr int kPorts = 9;
    static constexpr int kRecentPorts = 5;      // typed names that are offered again
    static constexpr auto kEightBits = "N,8,1"; // the usual character formats
    static constexpr auto kSevenBits = "E,7,1";

    struct Parts
    {
        ComSetOwner& owner;
        const platform::ComPorts& ports;
        clsLibrary& library; // with the settings and the presenter of its context
        QString commandLine; // see ModelDetection
    };

    explicit ComSetSession(const Parts& parts, QObject* parent = nullptr);
    ~ComSetSession() override;

    void Logs(Log& objErrLog, Log& objTrcLog);

    ComSetFields open();
    void close();

    // What the lists offer, after open.
    QStringList portTexts() const; // "COM1", with the device and its description when there is one
    QString triedPortText() const; // the same for the port that is held now
    const QStringList& recentPorts() const { return m_recent.entries(); } // names typed before, the newest first
    QStringList speedTexts() const { return m_speeds; }
    QString otherChara() const { return m_otherChara; } // a stored format beside the usual two; empty: none
    QStringList modelCodes() const { return m_codes; }
    // What a typed text stands for: "COM3" for that port, else the name of a device or serial server.
    static void choosePort(const QString& text, ComSetFields& fields);
    static bool isWellNamed(const ComSetFields& fields); // a serial server's name has its form
    // Why the port of the fields (no name and position -1: the one that is held now) cannot be used and what to do;
    // empty when nothing speaks against it.
    QString portError(const ComSetFields& fields) const;

    // The model string for a model that is chosen by hand; empty when there is no such entry.
    QString pickModel(int modelPosition) const;
    // Asks the controller with the fields as they are and puts the answer into them. A failure is reported to the user.
    DetectionResult detect(ComSetFields& fields);
    // Ends a detection or a search that is under way.
    void stop();
    bool isDetecting() const { return m_detection.isBusy(); }

    // Searches for controllers at the port of the fields, with their settings first; what it comes upon the signals of
    // scan tell. False when it was stopped.
    ControllerScan& scan() { return m_scan; }
    bool search(const ComSetFields& fields);
    // Puts the settings, the slave and the model of a find into the fields.
    void takeFind(const ScanFind& find, ComSetFields& fields);

    // OK: whether the fields may be applied. Sets the owner's state; a failure is reported to the user.
    bool confirm(ComSetFields& fields);
    // Hands everything to the owner and starts its read; returns when the read has ended.
    void apply(const ComSetFields& fields);
    // Cancel.
    void dismiss();

    // "COM3" has number 3; 0 when nothing is selected, which leaves the port as it is.
    static int portNumber(const ComSetFields& fields) { return fields.portPosition + 1; }
    static QString speed(const ComSetFields& fields);                  // "9600"
    std::optional<int> slaveNumber(const ComSetFields& fields) const;  // nothing outside 1 to 99
    static bool isTimeOutRight(const ComSetFields& fields);            // empty, or milliseconds in the range
    int timeOutSeconds() const { return m_uclComm1.timeOutSeconds(); } // what an empty field stands for

Q_SIGNALS:
    void asking(const QString& address); // the controller is being asked
    void asked();                        // a detection has ended

private:
    static QString portText(int number, const platform::ComPort& port);
    QString selectSpeed(const QString& speed);
    bool isPortSound(const ComSetFields& fields);
    void keepOtherChara(const QString& chara);
    bool isInRange(const ComSetFields& fields);
    void reportRange(int least, int most);
    bool isModelKnown(ComSetFields& fields);
    void reportNoAnswer();
    void report(const QString& text);

    Parts m_parts;
    uclComm m_uclComm1;
    ModelDetection m_detection;
    RecentEntries m_recent;
    ControllerScan m_scan;
    QStringList m_speeds;
    QString m_otherChara;
    QStringList m_codes;
    int m_triedPort = 0; // that the own link was set to last
    bool m_holdsPort = false;
};
