#pragma once

#include "VisibleText.h"

#include <QByteArray>
#include <QString>

// Exit status of vorlantctl.
enum class ExitStatus {
    Done = 0,
    Differ = 1,     // the parameter sets that were compared differ
    Usage = 2,      // the command line makes no sense
    NoAnswer = 3,   // no port, or no valid reply from the controller
    WrongModel = 4, // the controller is another model than the one chosen, or one that the catalogue lacks
    BadFile = 5,    // a file or definition cannot be read or written
    Refused = 6     // a value was refused, or the controller holds another one after the write
};

// The result of a command: what belongs on standard output, or one line that says what failed, where, and what to do.
struct CommandResult
{
    ExitStatus status = ExitStatus::Done;
    QByteArray output; // UTF-8; after a failure only what is true all the same
    QString failure; // empty when sets differ, when a check printed what is wrong, and when done; there it may say what
                     // was left out

    static CommandResult done(const QByteArray& output) { return {ExitStatus::Done, output, QString()}; }
    static CommandResult failed(ExitStatus status, const QString& line)
    {
        return {status, QByteArray(), platform::visibleText(line.simplified())};
    }
    bool ok() const { return status == ExitStatus::Done; }
};
