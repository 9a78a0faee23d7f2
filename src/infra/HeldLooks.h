#pragma once

#include "LogReader.h"

#include <deque>

// Looks into a log that are shown later: the newest of them, up to a number of lines. Where older ones were dropped,
// the first of the rest says that lines are missing before it.
class HeldLooks
{
public:
    explicit HeldLooks(int mostLines) : m_mostLines(mostLines) {}

    void add(LogReader::Look look);
    int lines() const { return m_lines; }
    std::deque<LogReader::Look> take(); // the oldest first; nothing is held then

private:
    std::deque<LogReader::Look> m_looks;
    int m_mostLines;
    int m_lines = 0;
};
