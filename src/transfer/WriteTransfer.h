#pragma once

#include "RequestChannel.h"
#include "TransferReports.h"
#include "clsKX.h"

#include <vector>

class clsCfg;

// Writing parameters: puts the stored values of items into the write copies of their memory images, then walks the
// write command lists of these images, the memory writes first and the set requests after them. Nothing is repeated. An
// image that was not read completely is never written: its other bytes are not the controller's. Part of the transfer
// engine, which owns it and the channel.
class WriteTransfer
{
public:
    static constexpr int kPauseMs = 1000; // between the two passes when one parameter is written

    struct Parts
    {
        clsKX& kx;
        clsCfg& settings;
        MessagePresenter& questions;
        ProgressView& progress;
        TransferShell& shell;
        RequestChannel& channel;
    };

    explicit WriteTransfer(const Parts& parts) : m_parts(parts) {}

    // Each starts a report of its own. True when something was sent, so that it can be read back.
    bool writeOne(const QString& sTag);
    bool writeBlock(const clsBlock& block);
    bool writeAll();
    void cancel() { m_bCancel = true; }

    // The blocks of the last writeBlock, with its relay blocks.
    const std::vector<clsBlock*>& writtenBlocks() const { return m_blocks; }
    // After a read-back: which of the parameters that were sent hold something else now.
    void compareWithReadBack();
    const WriteReport& report() const { return m_report; }

private:
    // The images to write, each once, in the order of their first use.
    using Images = std::vector<clsKXAdr*>;

    // A parameter as it went into its image.
    struct Stored
    {
        clsData* item;
        QString sent;
        int edit; // its change state before
    };

    void start();
    bool isReady();
    bool isModelRight();
    bool confirmed();
    void storeBlock(const clsBlock& block, Images& colWrite);
    bool storeItem(clsData& item, Images& colWrite);
    bool finish(bool sent);
    bool sendData(const Images& colWrite, bool bSingle);
    bool sendPass(const Images& colWrite, int pass, bool bSingle, int& position);
    bool sendEntry(clsKXAdr& image, int i, int pass, bool bSingle);
    bool buildDirect(clsKXAdr& image, int i);
    bool buildSet(const clsKXAdr& image, int i, bool bSingle);
    void send(clsKXAdr& image, int i);
    QString tran(const char* english) const;

    Parts m_parts;
    WriteReport m_report;
    std::vector<Stored> m_stored;
    std::vector<clsBlock*> m_blocks;
    bool m_bCancel = false;
    quint8 m_functionCode = 0; // of the request that was built
};
