#pragma once

#include "TransferReports.h"
#include "clsKX.h"

#include <QSet>

#include <vector>

class clsCfg;

// The parameters that one write was asked for. Each is put into the write copy of its memory image; what the replies
// say about it is noted; and in the end those that are not known to be in the controller stay marked as changed.
//
// Order of calls: clear; add or addBlock for what was chosen; noteSent before the requests of some images and noteReply
// after each; finish; after a read-back compareWithReadBack. WriteTransfer owns it; the parts outlive it, and the model
// must not be loaded anew between clear and the last call.
class WriteSelection
{
public:
    // The images to write, each once, in the order of their first use.
    using Images = std::vector<clsKXAdr*>;

    // A parameter that was chosen and that a write command carries.
    struct Chosen
    {
        enum class Carried { No, Yes, Failed };
        QString tag;
        ItemState before;
        QString held;         // by the controller before; empty when not known
        bool changed = false; // against what the controller held
        bool refused = false; // not stored: no value, or one that is not allowed
        Carried carried = Carried::No;
        int answered = 0; // soundly, of the requests that are due for it
        QString sent;     // as the controller holds it
    };

    WriteSelection(clsKX& kx, const clsCfg& settings, WriteReport& report)
        : m_kx(kx), m_settings(settings), m_report(report)
    {}

    void abandon(); // nothing was sent: the parameters are what they were
    void clear();   // the write copies become what the controller held

    // Stores one item, or a block and its relay blocks, and appends their images. A value that cannot go out is
    // reported and leaves the image unchanged.
    void add(clsData& item, Images& images);
    void addWithRelays(const clsBlock& block, Images& images);
    void addBlock(const clsBlock& block, Images& images);
    const QList<int>& blocks() const { return m_blocks; } // numbers, relay blocks included

    const Chosen* find(const QString& tag) const; // null: not chosen, or carried by no write command
    bool contains(const QString& tag) const { return m_tags.contains(tag); } // also what no write command carries

    // How many requests of its image a parameter takes, written by itself: those that carry it and those that put it in
    // force.
    int requestsDue(const Chosen& chosen) const;

    // The parameters chosen that write entry i (from 1) of the image carries; 0: those of the image's section.
    QStringList tagsIn(const clsKXAdr& image, int i) const;

    // The parameter counts as changed even if the controller holds its value: sending it has an effect of its own.
    void keepMarked(const QString& tag);

    // What the controller is to hold afterwards: a value is kept in the width and with the places of its bytes.
    void noteSent(const Images& images);
    // Write entry i (from 1) of the image was answered soundly or not.
    void noteReply(clsKXAdr& image, int i, bool good);

    void finish();
    // What is known of each parameter now.
    QVector<SentParameter> parameters() const;
    // Which of the parameters that were sent hold something else now. Those that were not sent get their changed value
    // back.
    void compareWithReadBack();

private:
    void resetImages();
    SentParameter parameterOf(const Chosen& chosen) const;
    bool isDue(const Chosen& chosen, const clsKXAdr& image, int i) const;
    QString reasonOf(const Chosen& chosen) const;
    bool store(clsData& item, clsKXAdr& image);

    clsKX& m_kx;
    const clsCfg& m_settings;
    WriteReport& m_report;
    std::vector<Chosen> m_chosen;
    QSet<QString> m_tags;
    QList<int> m_blocks;
};
