#pragma once

#include "Log.h"
#include "Machine.h"

#include <QByteArray>
#include <QString>

#include <optional>

// One fixed-size ring log file: a 16-byte header and records of one length, the oldest overwritten when the ring is
// full. Every LogWrite opens, writes and closes; a failure is silent. Not guarded against a second process.
class clsLog final : public Log
{
public:
    static constexpr int kHeaderBytes = 16;
    static constexpr int kStampBytes = 25; // "[2007/03/05 14:07:09:042]"
    static constexpr int kFrameBytes = 27; // stamp and line end

    // The header of a log file; numbers as they stand there, whatever they are.
    struct Header
    {
        qint32 count = 0; // records that the ring has room for
        qint32 size = 0;  // bytes of a record
        qint32 last = 0;  // record written last, from 1; 0: none
    };
    static std::optional<Header> headerOf(const QByteArray& bytes); // nothing for less than kHeaderBytes

    explicit clsLog(platform::Machine& machine);

    void setLogPath(const QString& folder);   // refused when it names a plain file
    void setLogFileName(const QString& name); // bare name; refused with any of \ / : * ? " < > |
    void setMaxLogCnt(int records);           // taken when greater than 0; default 4095
    void setLogRecSize(int bytes);            // taken when greater than 27; default 256
    QString filePath() const;                 // of the machine; it need not be there
    bool LogSwitch() const { return m_logSwitch; }
    void setLogSwitch(bool on) { m_logSwitch = on; }

    // Appends the message as one or more records that bear the same time stamp.
    void LogWrite(const QString& Message) override;

private:
    platform::Machine& m_machine;
    QString m_logPath;
    QString m_logFileName = QStringLiteral("Check.log");
    int m_maxLogCnt = 4095;
    int m_logRecSize = 256;
    bool m_logSwitch = true;
};
