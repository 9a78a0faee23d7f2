#pragma once

#include "Clock.h"
#include "MSComm.h"
#include "Result.h"
#include "SystemColors.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class ProgramContext;
class clsLibrary;

// The serial link: sends one request frame at a time and collects the reply until the expected number of bytes has
// arrived, its owner calls the bytes a whole reply, or nothing has come for longer than the time-out. From a serial
// server, where anything may answer, the whole reply must come within the time-out and the time of its bytes on the
// wire. It knows nothing of Modbus.
//
// init reads the settings section "Comm" + link number of the main settings file and opens the port. sendMsg returns ""
// when the frame went out; then exactly one event reports the outcome, RecieveSuccess, or RecieveError with "Timeout"
// or with the name of the serial control's error. bRBuff has one spare element behind the bytes received.
class uclComm : public QObject
{
    Q_OBJECT

public:
    static constexpr int kTickMs = 100;
    static constexpr int kMaxReplyBytes = 32767;
    static constexpr int kLeastTimeOutMs = 50;
    static constexpr int kMostTimeOutMs = 3600000;

    // Whether what has come so far is a whole reply, though fewer bytes than expected.
    using WholeReply = std::function<bool(const QByteArray& received)>;

    enum class LinkState { Closed = 0, Idle = 1, Waiting = 3 };

    // ports and clock must outlive the link.
    uclComm(const platform::ComPorts& ports, platform::Clock& clock, QObject* parent = nullptr);
    ~uclComm() override;

    // Without a library the link makes one of its own, for the folders of the running program.
    void init(int lNo, clsLibrary* oLib = nullptr);
    void load(int lNo);
    bool openComm(); // false: errorText says why
    // The same for a port of this machine; a serial server is connected to when the next request goes out.
    void prepareComm();
    bool isDeferred() const { return m_isDeferred; } // closed, and connected to with the next request
    bool termComm();                                 // always false
    // bSave: the settings go into their file too. Gives why they did not.
    platform::Result<> changeComm(int lComPort, const QString& sSpeed, const QString& sChara, bool bSave = true);
    platform::Result<> save();

    int Port() const { return m_port; }
    QString PortName() const { return m_portName; } // a device or server in place of COMn; empty: none
    void setPortName(const QString& name);          // from the next opening on; save stores it, too
    // A device of this run that stands in for the port of the settings, with 9600,N,8,1; empty: ends that. Closes the
    // link. Port, name, speed and format stay those of the settings; setPortName and changeComm end it, too.
    void setStandIn(const QString& device);
    bool hasStandIn() const { return !m_standIn.isEmpty(); }
    QString Speed() const { return m_speed; }
    QString Chara() const { return m_chara; }

    // "" when the frame went out; else why not, and nothing was done.
    // Events run before it goes out, for up to three seconds where a serial server is connected to first: a request
    // that is given up meanwhile by cancelSend does not go out.
    QString sendMsg(const QByteArray& bBuff, int lRecvSize, const WholeReply& isWhole = {});
    void cancelSend();
    void cancelOpening(); // of a serial server
    // Ends a wait at once and without an event: what still comes is dropped.
    void giveUp();
    // What came while no reply was waited for, and has not been dropped by a request.
    QByteArray takeStray() { return m_state == LinkState::Idle ? m_comm.Input() : QByteArray(); }
    bool hasReceived() const { return !m_received.isEmpty(); } // a byte of the reply to the last request

    int openings() const { return m_openings; } // how often the port was opened: what is at the other end may differ
    int State() const { return static_cast<int>(m_state); } // 0 closed, 1 idle, 3 waiting for a reply
    QString errorText() const;      // why the port is not open, with the remedy, in the user's language
    QString device() const;         // of COMn; empty when there is none
    QString recordedDevice() const; // as history and backups name it: what stands in for the port is no controller
    // The time-out in milliseconds, kLeastTimeOutMs to kMostTimeOutMs; nothing: the whole seconds of the settings hold.
    // save stores it.
    std::optional<int> timeOutMs() const { return m_timeOutMs; }
    void setTimeOutMs(std::optional<int> milliseconds) { m_timeOutMs = milliseconds; }
    // Of a text; nothing for one that is no number of milliseconds in the range.
    static std::optional<int> timeOutOf(const QString& text);
    int timeOutSeconds() const { return m_timeOut; } // of the settings
    qint64 longestWaitMs() const;                    // of silence, before a request counts as lost

    // Kept for other users of the class; the control has no window here.
    bool CommVisible() const { return m_visible; }
    void setCommVisible(bool visible) { m_visible = visible; }

Q_SIGNALS:
    void RecieveSuccess(const QByteArray& bSBuff, const QByteArray& bRBuff);
    void RecieveError(const QByteArray& bSBuff, const QByteArray& bRBuff, const QString& sError);

private:
    clsLibrary& library();
    QString section() const;
    void configure(int lNo);
    void onCommEvent();
    void onTick();
    void checkRecv();
    void collect();
    QByteArray replyBuffer() const { return m_received + '\0'; }
    qint64 latestMs() const;
    bool isTimedOut() const;
    int tickMs() const;
    void endWait(LinkState state);

    const platform::ComPorts& m_ports;
    platform::Clock& m_clock;
    platform::MSComm m_comm;
    std::unique_ptr<platform::Timer> m_timer;
    platform::SystemColors m_colors;
    std::unique_ptr<ProgramContext> m_ownProgram; // for a link that was given no library
    clsLibrary* m_library = nullptr;
    int m_linkNo = 0;
    bool m_visible = false;
    LinkState m_state = LinkState::Closed;
    int m_openings = 0;
    bool m_isDeferred = false;
    int m_port = 1;
    QString m_portName;
    QString m_standIn;
    QString m_speed;
    QString m_chara;
    WholeReply m_isWhole;
    qint64 m_latestMs = 0;       // of the running time, at which a reply must be whole
    qint64 m_lastActivityMs = 0; // of the running time
    int m_timeOut = 5;           // seconds
    std::optional<int> m_timeOutMs;
    QByteArray m_sent;
    QByteArray m_received;
    int m_expected = 0;
    unsigned m_sendings = 0; // calls of sendMsg and cancelSend: whether another one has come in between
};
