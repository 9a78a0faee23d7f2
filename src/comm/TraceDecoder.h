#pragma once

#include "FrameFields.h"

#include <optional>

// Reads the lines of a trace log in their order and joins each reply with the request before it, by which the fields of
// the reply get their names and a reply that belongs to another request is found.
class TraceDecoder
{
public:
    FrameFields decode(const QString& line);
    // The request again, when the line decoded last ended a repetition of it: the log has no line of that. Only reads
    // are repeated.
    const std::optional<FrameFields>& repetition() const { return m_repetition; }
    // The lines that follow have nothing to do with those before.
    void restart();

private:
    FrameFields sent(const QByteArray& wire);
    FrameFields received(const QByteArray& wire, bool accepted);
    const FrameFields* requestOf(const QByteArray& wire) const;

    std::optional<FrameFields> m_request;
    std::optional<FrameFields> m_reply; // to be repeated when the program does not accept it
    std::optional<FrameFields> m_repetition;
    bool m_isAnswered = false;
    bool m_hasEnded = false; // the request, or one of its repetitions
};
