#pragma once

#include "TransferParts.h"
#include "TransferReports.h"
#include "WriteSelection.h"

#include <optional>

// Turns an entry of a write command list into a request: memory writes in pass 0, set requests in pass 1. A set request
// takes a literal, the value of a parameter that is being written, or else what the controller held.
class WriteRequests
{
public:
    static constexpr int kPasses = 2;

    // What is written: blocks, parameters by themselves with all that belongs to their images, or chosen parameters and
    // nothing else.
    enum class Scope { Blocks, Single, Chosen };

    WriteRequests(const TransferParts& parts, const WriteSelection& selection, WriteReport& report)
        : m_parts(parts), m_selection(selection), m_report(report)
    {}

    // Builds entry i (from 1) in the channel's clsModbus and traces it. False: nothing is to be sent. What should have
    // been is reported.
    [[nodiscard]] bool build(const clsKXAdr& image, int i, int pass, Scope scope);
    quint8 functionCode() const { return m_functionCode; } // of the request that was built

private:
    bool buildDirect(const clsKXAdr& image, int i);
    bool buildSet(const clsKXAdr& image, int i, Scope scope);
    bool isChosen(const QString& tag) const;
    std::optional<qint16> setValue(const QString& tag) const;
    void reportNoValue(const clsKXAdr& image, int i, const QString& tag);

    const TransferParts& m_parts;
    const WriteSelection& m_selection;
    WriteReport& m_report;
    quint8 m_functionCode = 0;
};
