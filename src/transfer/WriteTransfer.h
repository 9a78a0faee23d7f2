#pragma once

#include "ControllerState.h"
#include "MessagePresenter.h"
#include "ProgressView.h"
#include "RequestChannel.h"
#include "TransferReports.h"
#include "clsKX.h"

#include <QSet>

#include <functional>
#include <optional>
#include <vector>

class clsCfg;

// Writing parameters. Each write begins with what the controller held: the write copies of all images become their
// originals, then the chosen items are stored into them. The write command lists of the images concerned are walked,
// the memory writes first and the set requests after them; nothing is repeated. A set request that names an item which
// is not being written sends the value last read.
//
// Not written: a value that the controller cannot hold, one outside its limits unless the controller itself sent it,
// and any image that was not read completely, because its other bytes are not the controller's. What is not known to be
// in the controller afterwards stays changed.
//
// Part of the transfer engine, which owns it and the channel.
class WriteTransfer
{
public:
    static constexpr int kPauseMs = 1000; // between the two passes when single parameters are written

    struct Parts
    {
        clsKX& kx;
        clsCfg& settings;
        MessagePresenter& questions;
        ProgressView& progress;
        ControllerState& controller;
        RequestChannel& channel;
    };

    explicit WriteTransfer(const Parts& parts) : m_parts(parts) {}

    // Each is one user action: one question, one report. True when something was sent, so that it can be read back.
    bool writeItems(const QStringList& tags); // every image once, as for a single parameter
    bool writeBlock(const clsBlock& block);   // with its relay blocks
    // The parameter goes behind the block (null: none), and only when all of the block was taken.
    bool writeBlockThenOne(const clsBlock* block, const QString& sTag);
    // beforeFirstFrame runs when nothing else is in the way; false gives the write up.
    bool writeAll(const std::function<bool()>& beforeFirstFrame);
    void cancel() { m_bCancel = true; }

    // Numbers of the blocks of the last writeBlock, with its relay blocks.
    const QList<int>& writtenBlocks() const { return m_blocks; }
    bool isOfAll() const { return m_isOfAll; } // the last write was writeAll
    // After a read-back: which of the parameters that were sent hold something else now. Those that were not sent get
    // their changed value back.
    void compareWithReadBack();
    const WriteReport& report() const { return m_report; }
    void clearReport() { m_report = {}; }

private:
    // The images to write, each once, in the order of their first use.
    using Images = std::vector<clsKXAdr*>;

    // A parameter that was chosen and that a write command carries.
    struct Chosen
    {
        enum class Carried { No, Yes, Failed };
        QString tag;
        ItemState before;
        bool changed = false; // against what the controller held
        bool refused = false; // not stored: no value, or one that is not allowed
        Carried carried = Carried::No;
        QString sent; // as the controller holds it
    };

    void start();
    void resetImages();
    bool isReady();
    bool mayWrite();
    bool confirmed();
    bool isModelRight();
    void storeBlock(const clsBlock& block, Images& colWrite);
    void storeWithRelays(const clsBlock& block, Images& colWrite);
    void storeItem(clsData& item, Images& colWrite);
    bool storeChanged(clsData& item, clsKXAdr& image);
    Chosen* find(const QString& tag);
    bool finish(bool sent);
    bool sendData(const Images& colWrite, bool bSingle);
    void noteSentValues(const Images& colWrite);
    bool sendPass(const Images& colWrite, int pass, bool bSingle, int& position);
    bool sendEntry(clsKXAdr& image, int i, int pass, bool bSingle);
    bool buildDirect(clsKXAdr& image, int i);
    bool buildSet(const clsKXAdr& image, int i, bool bSingle);
    std::optional<qint16> setValue(const QString& tag);
    void send(clsKXAdr& image, int i);
    void noteResult(clsKXAdr& image, int i, bool good);
    QString tran(const char* english) const;

    Parts m_parts;
    WriteReport m_report;
    std::vector<Chosen> m_chosen;
    QSet<QString> m_chosenTags; // those that no write command carries too
    QList<int> m_blocks;
    bool m_isOfAll = false;
    bool m_bCancel = false;
    quint8 m_functionCode = 0; // of the request that was built
};
