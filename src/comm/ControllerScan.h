#pragma once

#include "Log.h"
#include "ModelQuestion.h"
#include "RequestChannel.h"
#include "ScanPlan.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

class clsLibrary;
class uclComm;

// What a search came upon.
struct ScanFind
{
    enum class Kind {
        Controller,  // a slave with a model string
        NoModel,     // a slave that answers with sound frames but holds no model string
        Collision,   // one slave number is answered with bytes that are no frame, or twice
        OtherSetting // so are all: something is there, at another setting; slave is 0
    };
    Kind kind = Kind::Controller;
    int port = 0; // n of COMn
    QString device;
    LineSettings line;
    int slave = 0;
    QString model;      // the model string, as it came
    int responseMs = 0; // from the question to the last byte of the answer
};

// Searches for controllers: asks every slave number with every setting for its model, with a short time-out. An answer
// that is no frame is asked for again. A slave whose answer comes while the next one is asked is asked again with more
// time.
//
// run returns when all was asked or stop was called, dispatching events while it waits; one run at a time. It opens and
// closes the link's port as it needs to and leaves it closed. Link, library and log are kept by reference and must
// outlive the scan.
class ControllerScan : public QObject
{
    Q_OBJECT

public:
    struct Plan
    {
        QList<int> ports; // n of COMn
        QList<LineSettings> settings;
        int firstSlave = 1; // 1 to 247
        int lastSlave = 99;
        bool onlyFirst = false; // ends with the first controller
    };

    ControllerScan(uclComm& link, const clsLibrary& library, QObject* parent = nullptr);
    ~ControllerScan() override;

    void setTraceLog(Log& traceLog) { m_traceLog = traceLog; }

    // False when it was stopped, or the program is closing.
    bool run(const Plan& plan);
    void stop();
    bool isBusy() const { return m_isBusy; }

Q_SIGNALS:
    // done of total questions have been asked.
    void asking(const LineSettings& line, int slave, int done, int total);
    void found(const ScanFind& find);
    // It is skipped; the reason in the user's language names it.
    void portFailed(int port, const QString& reason);

private:
    enum class Answer { Silent, Sound, Refused, Garbled, Gone };

    void scanPort(int port);
    bool openPort(int port, const LineSettings& line);
    bool scanSetting(const LineSettings& line); // false when the port has gone
    Answer lookAt(int slave);
    Answer ask(int slave, int address);
    Answer askAgain(int slave);
    int lateSlave(int asked) const;
    bool isAnsweredTwice();
    void tell(Answer answer, int slave);
    void tellFound(ScanFind::Kind kind, int slave, const QString& model = QString(), int responseMs = 0);
    void noteGarbled(int slave);
    void tellCollision();
    bool isEnded() const { return m_isStopped || m_isDone; }

    uclComm& m_link;
    const clsLibrary& m_library;
    std::reference_wrapper<Log> m_traceLog = noLog();
    std::unique_ptr<RequestChannel> m_channel; // one for each slave: late answers of others name their slave
    QString m_answer;                          // of the last sound reply
    int m_responseMs = 0;
    Plan m_plan;
    int m_port = 0;
    LineSettings m_line;
    int m_asked = 0;
    int m_total = 0;
    int m_garbledInRow = 0;
    int m_garbledSlave = 0;
    QSet<QString> m_otherSettings; // speed and format that were told
    bool m_isBusy = false;
    bool m_isStopped = false;
    bool m_isDone = false;
};
