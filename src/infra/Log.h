#pragma once

#include <QString>

// Where lines of text are logged. The program's logs are of class clsLog; noLog() is for who has none.
class Log
{
public:
    virtual ~Log() = default;

    // Appends the message. A failure is silent.
    virtual void LogWrite(const QString& Message) = 0;
};

// The log that keeps nothing.
inline Log& noLog()
{
    class NoLog final : public Log
    {
        void LogWrite(const QString& Message) override { Q_UNUSED(Message); }
    };
    static NoLog log;
    return log;
}
