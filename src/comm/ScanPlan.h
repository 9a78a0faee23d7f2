#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// How a line is set: what two ends must have in common to understand each other.
struct LineSettings
{
    QString speed; // "9600"
    QString chara; // "N,8,1"
    int mode = 0;  // 0 RTU, 1 ASCII

    bool operator==(const LineSettings&) const = default;
    bool isPossible() const; // RTU needs 8 data bits
    QString text() const;    // "9600,N,8,1 RTU"
};

// What a search for controllers asks with, and for how long it waits.
namespace scanplan {

// Empty lists stand for the likely ones: 9600 and 19200; N,8,1, E,7,1, E,8,1 and N,8,2; RTU and ASCII.
struct Choice
{
    QStringList speeds;
    QStringList charas;
    QList<int> modes;
};

// All possible settings of a choice, those in use first. Settings in use that are none of the likely ones are asked
// with too where nothing was chosen in their place.
QList<LineSettings> settings(const LineSettings& inUse, const Choice& choice);

// "N81" and "N,8,1" as "N,8,1"; empty for what is no format.
QString charaOf(const QString& text);
QString modeText(int mode); // "RTU", "ASCII"

// The time-out for the question for the model: the request, five characters and 120 ms for the controller, and the
// answer, at the speed of the line.
int timeOutMs(const LineSettings& line);

} // namespace scanplan
