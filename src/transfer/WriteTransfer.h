#pragma once

#include "ChosenCheck.h"
#include "TransferParts.h"
#include "TransferReports.h"
#include "WriteRequests.h"
#include "WriteSelection.h"

#include <functional>

// Writing parameters. Each write begins with what the controller held: the write copies of all images become their
// originals, then the chosen items are stored into them. The write command lists of the images concerned are walked,
// the memory writes first and the set requests after them; nothing is repeated. A set request that names an item which
// is not being written sends the value last read.
//
// Not written: a value that the controller cannot hold, one outside its limits unless the controller itself sent it,
// and any image that was not read completely, because its other bytes are not the controller's. What is not known to be
// in the controller afterwards stays changed.
//
// A write of chosen parameters looks first: what the controller holds of them now has to be what the user saw. It sends
// them and nothing else, reads back and says of each what became of it.
//
// Part of the transfer engine, which owns it and the channel. WriteSelection keeps what becomes of each parameter,
// WriteRequests builds the requests; this is the order in which they go out.
class WriteTransfer
{
public:
    static constexpr int kPauseMs = 1000; // between the two passes when single parameters are written

    // Runs before the first frame of a write, when nothing else is in the way; false gives the write up. cause: what is
    // written, for a person.
    using BeforeFirstFrame = std::function<bool(const QString& cause, const QVector<SentParameter>& parameters)>;

    WriteTransfer(const TransferParts& parts, ReadTransfer& read, BeforeFirstFrame beforeFirstFrame)
        : m_parts(parts), m_beforeFirstFrame(std::move(beforeFirstFrame)),
          m_selection(parts.kx, parts.settings, m_report), m_requests(m_parts, m_selection, m_report),
          m_check(m_parts, read, m_report)
    {}
    WriteTransfer(const WriteTransfer&) = delete; // the members refer to each other
    WriteTransfer& operator=(const WriteTransfer&) = delete;

    // Each is one user action: one question, one report. True when something was sent, so that it can be read back.
    bool writeItems(const QStringList& tags); // every image once, as for a single parameter
    bool writeBlock(const clsBlock& block);   // with its relay blocks
    // The parameter goes behind the block (null: none), and only when all of the block was accepted.
    bool writeBlockThenOne(const clsBlock* block, const QString& sTag);
    bool writeAll();
    bool writeChosen(const QStringList& tags);
    void cancel() { m_bCancel = true; }

    // Numbers of the blocks of the last writeBlock, with its relay blocks.
    const QList<int>& writtenBlocks() const { return m_selection.blocks(); }
    bool isOfAll() const { return m_isOfAll; } // the last write was writeAll
    // After a read-back: which of the parameters that were sent hold something else now. Those that were not sent get
    // their changed value back.
    void compareWithReadBack() { m_selection.compareWithReadBack(); }
    const WriteReport& report() const { return m_report; }
    void clearReport() { m_report = {}; }

private:
    using Images = WriteSelection::Images;
    using Scope = WriteRequests::Scope;

    [[nodiscard]] bool start();
    [[nodiscard]] bool mayWrite();
    [[nodiscard]] bool begin(const QString& cause);
    std::vector<clsData*> writtenItems(const QStringList& tags) const;
    QString namesOf(const std::vector<clsData*>& items) const;
    bool sendChosen(const QStringList& tags);
    bool isAllowed();
    bool isReady();
    bool isConfirmed();
    bool isModelRight();
    bool isRangeInForce() const;
    bool finish(bool sent);
    bool sendData(const Images& colWrite, Scope scope);
    void pauseBeforeSets(const Images& colWrite, Scope scope);
    bool sendPass(const Images& colWrite, int pass, Scope scope, int& position);
    bool sendImage(clsKXAdr& image, int pass, Scope scope);
    void send(clsKXAdr& image, int i);
    bool isStopped() const { return m_bCancel || m_parts.channel.isAborted(); }

    TransferParts m_parts;
    BeforeFirstFrame m_beforeFirstFrame;
    WriteReport m_report;
    WriteSelection m_selection;
    WriteRequests m_requests;
    ChosenCheck m_check;
    bool m_isOfAll = false;
    bool m_bCancel = false;
};
