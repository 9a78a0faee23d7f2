#pragma once

#include "LineDevice.h"

#include <QByteArray>

#include <array>
#include <vector>

namespace platform {

// The telnet side of a serial server: escapes the bytes of the line (RFC 854), agrees on binary transmission (RFC 856)
// and on the COM port option (RFC 2217), sets the line at the far end and compares what it answers. It has no socket:
// what receive and the others leave in takeOutput goes to the server.
//
// Order of calls: start; receive for whatever comes, until state is Ready or Failed; then escape for what is sent.
class ComPortOption
{
public:
    static constexpr qsizetype kMostOptionBytes = 64; // of a subnegotiation; what is longer is nothing for this line

    enum class State { Negotiating, Ready, Failed };

    void start(const LineSettings& settings);
    void set(const LineSettings& settings); // again, while it is ready: its answers are compared, too
    void purge();                           // what the server holds of both directions

    QByteArray receive(const QByteArray& bytes);       // the bytes of the line among them
    QByteArray takeOutput();                           // what is to be sent; it is not escaped again
    static QByteArray escape(const QByteArray& bytes); // of the line, as they are sent

    State state() const;
    const QString& reason() const { return m_reason; } // of a failure, with the remedy

private:
    enum class Reading { Data, Command, Option, Subnegotiation, CommandInside };
    enum class Agreement { Off, Asked, On };

    // A value that the server has to repeat.
    struct Asked
    {
        quint8 command;
        QByteArray value;
        QString refusal; // when it answers another one
        bool mayStaySilent = false;
    };

    void take(quint8 byte, QByteArray& data);
    void takeCommand(quint8 byte, QByteArray& data);
    void takeInside(quint8 byte);
    void takeCommandInside(quint8 byte, QByteArray& data);
    void agree(quint8 verb, quint8 option);
    void takeAnswer(quint8 command, const QByteArray& value);
    void ask(quint8 command, const QByteArray& value, const QString& refusal, bool mayStaySilent = false);
    void command(quint8 verb, quint8 option);
    void fail(const QString& reason);

    LineSettings m_settings;
    Reading m_reading = Reading::Data;
    quint8 m_verb = 0;
    QByteArray m_inside;
    QByteArray m_output;
    std::array<Agreement, 256> m_mine{};   // what this end does
    std::array<Agreement, 256> m_theirs{}; // what the server does
    std::vector<Asked> m_asked;
    QString m_reason;
};

} // namespace platform
