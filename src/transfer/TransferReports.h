#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// How the last read ended.
enum class ReadOutcome {
    None,        // no read yet, or the user declined
    Complete,    // walked to its end; see ReadReport::givenUp
    NoResponse,  // not one request was answered
    LinkRefused, // the port is closed or busy
    WrongModel,  // the controller's model string differs from the selected one
    Cancelled,
    Aborted // the program is closing
};

struct ReadReport
{
    ReadOutcome outcome = ReadOutcome::None;
    bool refreshed = false;   // the items have their values from the images
    int requests = 0;         // frames sent, repetitions included
    int failures = 0;         // frames without a valid reply
    QStringList givenUp;      // entries that got no valid reply, as "section: command address"
    QStringList unreadBlocks; // by name, as the grid titles them; sections that no block shows by their own name
    QString lastFailure;      // what went wrong last, for a person
    QString answeredModel;    // the model string at FBC0, when it was read
    qint64 wireBytes = 0;     // bytes sent and bytes of the replies expected, for measures
};

// How the last write ended.
enum class WriteOutcome {
    None,        // no write yet
    Complete,    // walked to its end; see WriteReport::failed
    NotRead,     // nothing to write before the parameters were read
    NothingToDo, // no such parameter or block
    WrongModel,
    Declined,
    Cancelled, // some entries may have been sent
    Aborted,
    NoAnswer, // what the controller holds could not be read before it: nothing was sent
    Forbidden // the options or the command line say that nothing is written
};

// A parameter that did not accept its value: what was sent, and what was read back (stored values).
struct NotAccepted
{
    QString tag;
    QString sent;
    QString kept;
};

// An entry of a write command list without a sound reply.
struct FailedRequest
{
    QString entry;    // "section: command address"; the section alone when all of it was not sent
    QString reason;   // for a person
    QStringList tags; // of the parameters chosen that it carries

    QString text() const { return entry + QStringLiteral(": ") + reason; }
};

// What became of a parameter that a write was asked for.
enum class SendOutcome {
    NotSent,
    Conflict,    // the controller held something else than the user saw: not sent
    Refused,     // no value that may go out: not sent
    Failed,      // sent, but not known to be in the controller
    NotAccepted, // sent, and the controller keeps another value
    Accepted
};

struct SentParameter
{
    QString tag;
    SendOutcome outcome = SendOutcome::NotSent;
    bool changes = false; // the value differs from what the controller held
    QString reason;       // why it failed or was not sent, for a person
    QString before;       // stored: what the controller held; of a conflict what the user saw; empty when not known
    QString value;        // stored: what was to be written
    QString held;         // stored: what the controller held at the end, as far as known
};

struct WriteReport
{
    WriteOutcome outcome = WriteOutcome::None;
    int requests = 0;
    int accepted = 0; // requests that the controller answered soundly
    int written = 0;  // parameters that are known to be in the controller now, changed or not
    QVector<FailedRequest> failed;
    QStringList skipped;       // tags whose value is none that the controller could hold; the controller keeps its own
    QStringList outsideLimits; // tags whose value is outside its limits or no choice; the controller keeps its own
    QStringList conflicts;     // tags whose value at the controller is not the one that the user saw; not sent
    QStringList unsent; // tags whose value is not known to be in the controller, for any reason; they stay changed
    QVector<NotAccepted> notAccepted;         // after the read-back that follows
    qint64 wireBytes = 0;                     // as in ReadReport
    int pausesMs = 0;                         // prescribed pauses
    QVector<SentParameter> parameters;        // all that were asked for
    ReadOutcome readBack = ReadOutcome::None; // of chosen parameters, when some of them were sent
};
