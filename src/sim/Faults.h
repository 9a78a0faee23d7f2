#pragma once

#include "Result.h"

#include <QByteArray>
#include <QString>
#include <random>
#include <vector>

// What a simulated controller does wrong, repeatable by its seed. A fault is KIND[:ARG][@WHEN]; WHEN is a probability
// ("0.3") or every n-th reply ("every3"); without it every reply is hit.
//   silent            no reply, though the request was carried out
//   drop              one byte of the reply is missing
//   corrupt           one bit of the reply is turned over
//   truncate          the second half of the reply is missing
//   extra             one to four bytes that do not belong to it follow the reply
//   delay:MS          the reply comes late (1 to 3600000 ms)
//   exception:CODE    an exception reply with this code (1 to 255), and the request is not carried out
//   wrong-slave       the reply carries another slave address, with the check value that goes with it
//   noise             as many random bytes as the reply has, in its place
//   reset             the controller restarts: no reply, and its memory is what it was at the start
class Faults
{
public:
    explicit Faults(unsigned seed = 1) : m_random(seed) {}

    // Refuses a text that names no fault, with the reason.
    platform::Result<> add(const QString& text);

    // The kinds as they are written, with what stands for their argument: "silent, ..., delay:MS, ...".
    static QString kinds();

    struct Verdict
    {
        bool silent = false;
        bool drop = false;
        bool corrupt = false;
        bool truncate = false;
        bool extra = false;
        bool wrongSlave = false;
        bool noise = false;
        bool reset = false;
        int exception = 0; // 0: none
        int delayMs = 0;
    };
    // What befalls the next reply.
    Verdict next();

    // What becomes of the reply on the line. Exception, delay and restart are the controller's own doing.
    QByteArray damaged(const QByteArray& reply, const Verdict& verdict, bool ascii);

private:
    enum class Kind { Silent, Drop, Corrupt, Truncate, Extra, Delay, Exception, WrongSlave, Noise, Reset };
    struct Fault
    {
        Kind kind = Kind::Silent;
        int argument = 0; // code or milliseconds
        double probability = 1;
        int every = 0; // 0: by probability
        int count = 0;
    };
    static bool parseWhen(const QString& text, Fault& fault);
    static void apply(const Fault& fault, Verdict& verdict);
    bool strikes(Fault& fault);
    qsizetype pick(qsizetype first, qsizetype last);
    QByteArray randomBytes(qsizetype count);

    std::vector<Fault> m_faults;
    std::mt19937 m_random;
};
