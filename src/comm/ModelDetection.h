#pragma once

#include "ModelQuestion.h"
#include "RequestChannel.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

class clsLibrary;
class uclComm;

// How a detection ended.
enum class DetectionResult {
    Found,    // the model string begins with a code of the list
    NotFound, // the controller answered with a model string that the list lacks
    NoAnswer, // the last question got no sound answer
    Stopped   // given up by the user, or the program is closing
};

struct Detection
{
    DetectionResult result = DetectionResult::Stopped;
    int position = -1; // of the code in the list, from 0; -1 unless found
};

// Asks the connected controller which model it is: the 14 characters at FBC0, or at FBC8 when FBC0 holds something
// else. The link must be open and idle; one detection at a time. detect and getModelFromKX return when the answer is
// there, dispatching events while they wait; the time-out of the link bounds the wait, stop ends it at once. The link
// and the logs are kept by reference and must outlive the detection.
class ModelDetection : public QObject
{
    Q_OBJECT

public:
    // commandLine: without the program's name. With "/D" in it the value of "/M:" takes the place of what a controller
    // answers, so that a model can be tried without having one.
    ModelDetection(uclComm& link, const clsLibrary& library, const QString& commandLine, QObject* parent = nullptr);

    void Logs(Log& objErrLog, Log& objTrcLog);

    // lSlaveNo 1 to 247, mode 0 RTU or 1 ASCII.
    Detection detect(int lSlaveNo, int mode, const QStringList& codes);
    // One question. sAdr: "&hFBC0". False when no sound answer came.
    bool getModelFromKX(int lSlaveNo, const QString& sAdr);
    void setTransmissionMode(int mode) { m_mode = mode; }
    void stop();
    bool isBusy() const { return m_busy; }

    // The model string as known now: set before a detection, replaced by each sound answer, "Nothing" after the link
    // reported an error.
    QString modelString() const { return m_modelString; }
    void setModelString(const QString& text) { m_modelString = text; }
    QString failure() const { return m_failure; }                     // why the last question got no sound answer
    bool isRefused() const { return m_channel.exceptionCode() != 0; } // the last question

Q_SIGNALS:
    void asking(const QString& address); // "FBC0"

private:
    bool buildRequest(int lSlaveNo, const QString& sAdr);
    QString overridden(const QString& answered) const;

    const clsLibrary& m_library;
    const QString m_commandLine;
    RequestChannel m_channel;
    ModelQuestion m_question;
    std::reference_wrapper<Log> m_errorLog = noLog();
    int m_mode = 0;
    QString m_modelString;
    QString m_failure;
    bool m_busy = false;
};
