#pragma once

#include "ControllerScan.h"
#include "ModelDetection.h"
#include "OfferedPorts.h"
#include "RecentEntries.h"
#include "uclComm.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

class ComSetOwner;
class clsLibrary;

// What the fields of the communication settings hold.
struct ComSetFields
{
    PortChoice port = {1, QString(), QString()};
    QString speedText;   // "9600bps"
    QString chara;       // "N,8,1"
    QString timeOutText; // milliseconds; empty: the seconds of the settings
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
    static constexpr int kRecentPorts = 5; // typed names that are offered again

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
    const OfferedPorts& ports() const { return m_ports; }
    const QStringList& recentPorts() const { return m_recent.entries(); } // names typed before, the newest first
    QStringList speedTexts() const { return m_speeds; }
    QString otherChara() const { return m_otherChara; } // a stored format that is not offered else; empty: none
    QStringList modelCodes() const { return m_codes; }
    // Looks what is plugged in now, see OfferedPorts::look. Not while a controller is asked.
    void lookAtPorts(PortChoice& choice);
    static bool isPortSound(const PortChoice& port); // something is chosen, and a serial server's name has its form
    // Why the port cannot be used and what to do; empty when nothing speaks against it.
    QString portError(const PortChoice& port) const;
    // Why no controller can answer with the format and the mode of the fields; empty when it can.
    QString lineWarning(const ComSetFields& fields) const;

    // The model string for a model that is chosen by hand; empty when there is no such entry.
    QString pickModel(int modelPosition) const;
    // Asks the controller with the fields as they are and puts the answer into them. A failure is reported to the user.
    DetectionResult detect(ComSetFields& fields);
    // Ends a detection or a search that is under way.
    void stop();
    bool isDetecting() const { return m_detection.isBusy(); }

    // Searches for controllers at the port of the fields, with their settings first; what it comes upon the signals of
    // scan tell. False when it was stopped or there is no such port, which is reported to the user.
    ControllerScan& scan() { return m_scan; }
    bool search(ComSetFields& fields);
    // Puts the settings, the slave and the model of a find into the fields.
    void takeFind(const ScanFind& find, ComSetFields& fields);

    // OK: whether the fields may be applied. Sets the owner's state; a failure is reported to the user.
    bool confirm(ComSetFields& fields);
    // Hands everything to the owner and starts its read; returns when the read has ended.
    void apply(const ComSetFields& fields);
    // Cancel.
    void dismiss();

    static QString speed(const ComSetFields& fields);                  // "9600"
    std::optional<int> slaveNumber(const ComSetFields& fields) const;  // nothing outside 1 to 99
    static bool isTimeOutRight(const ComSetFields& fields);            // empty, or milliseconds in the range
    int timeOutSeconds() const { return m_uclComm1.timeOutSeconds(); } // what an empty field stands for

Q_SIGNALS:
    void asking(const QString& address); // the controller is being asked
    void asked();                        // a detection has ended

private:
    QString selectSpeed(const QString& speed);
    bool takePort(ComSetFields& fields);
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
    OfferedPorts m_ports;
    QStringList m_speeds;
    QString m_otherChara;
    QStringList m_codes;
    int m_triedPort = 0; // that the own link was set to last
    bool m_holdsPort = false;
};
