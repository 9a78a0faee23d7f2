#pragma once

#include <QByteArray>
#include <QString>
#include <random>
#include <vector>

// What a simulated controller does wrong, repeatable by its seed. A fault is KIND[:ARG][@WHEN]; WHEN is a probability
// ("0.3") or every n-th reply ("every3"); without it every reply is hit.
//   silent            no reply
//   corrupt           one bit of the reply is turned over
//   truncate          the second half of the reply is missing
//   exception:CODE    an exception reply with this code (1 to 255)
class Faults
{
public:
    explicit Faults(unsigned seed = 1) : m_random(seed) {}

    // False with the reason when the text names no fault.
    bool add(const QString& text, QString& error);

    struct Verdict
    {
        bool silent = false;
        bool corrupt = false;
        bool truncate = false;
        int exception = 0; // 0: none
    };
    // What befalls the next reply.
    Verdict next();

    // The reply with its corruption or truncation.
    QByteArray damaged(const QByteArray& reply, const Verdict& verdict);

private:
    enum class Kind { Silent, Corrupt, Truncate, Exception };
    struct Fault
    {
        Kind kind = Kind::Silent;
        int code = 0;
        double probability = 1;
        int every = 0; // 0: by probability
        int count = 0;
    };
    bool strikes(Fault& fault);

    std::vector<Fault> m_faults;
    std::mt19937 m_random;
};
