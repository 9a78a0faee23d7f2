#pragma once

#include <QByteArray>
#include <QHashSeed>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <vector>

// What the fuzzers share: an input is text in parts that a line "%%" keeps apart, so that seeds can be read and edited;
// a property that does not hold ends the process, which libFuzzer reports together with the input.

inline std::vector<QByteArray> partsOf(const uint8_t* data, size_t size, size_t count)
{
    const QByteArray separator = "\n%%\n";
    QByteArray rest(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    std::vector<QByteArray> parts;
    while (parts.size() + 1 < count) {
        const auto end = rest.indexOf(separator);
        parts.push_back(end < 0 ? rest : rest.left(end));
        rest = end < 0 ? QByteArray() : rest.mid(end + separator.size());
    }
    parts.push_back(rest);
    return parts;
}

inline void require(bool holds, const char* property, const QString& detail = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "broken property: %s %s\n", property, qPrintable(detail));
    std::abort();
}

// Called once by each fuzzer: the same input takes the same way in every run.
inline void makeRepeatable()
{
    QHashSeed::setDeterministicGlobalSeed();
}
