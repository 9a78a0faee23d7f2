#pragma once

#include "TransferParts.h"
#include "TransferReports.h"

#include <functional>

// Reading all parameters: walks the read command list of every memory image, each entry one request, sent up to six
// times, and shows the grid. Part of the transfer engine, which owns it and the channel.
class ReadTransfer
{
public:
    static constexpr int kRetries = 5; // repetitions of a request after the first sending

    using AttemptFailed = std::function<void(const QString& entry, int attempt, int maximum, const QString& reason)>;

    ReadTransfer(const TransferParts& parts, AttemptFailed attemptFailed);

    // What a read is for: to show what the controller holds, or to see what became of a write.
    enum class Purpose { Show, ReadBack };

    // colRefData: the blocks whose items take the values read; null for all items.
    void run(const std::vector<clsBlock*>* colRefData, Purpose purpose);
    // Reads these images alone, for a write: nothing is asked, shown or said, and the items stay what they are. An
    // image that did not answer as a whole holds what it held before and is named.
    struct Look
    {
        ReadReport report;
        QStringList unread; // sections
    };
    Look look(const std::vector<clsKXAdr*>& images);
    // The model string was read since the port was opened: the controller is the one whose parameters are here.
    bool isModelCurrent() const { return m_modelSeenAt.has_value() && m_modelSeenAt == m_parts.channel.opening(); }
    void cancel() { m_bCancel = true; }
    const ReadReport& report() const { return m_report; }

private:
    using Result = RequestChannel::Result;
    enum class Step { Next, Stop };

    Step readImages(const std::vector<clsKXAdr*>& images);
    Step readImage(clsKXAdr& image);
    bool buildRequest(const clsKXAdr& image, int i);
    Step sendWithRetries(clsKXAdr& image, const QString& entry);
    void noteFailure(const QString& entry, int attempt);
    QString progressText() const;
    Result storeReply(clsKXAdr& image);
    void finishNormally(const std::vector<clsBlock*>* colRefData);
    void finishUnanswered();
    ReadOutcome stoppedBy() const; // a read that did not come to its end
    void finishStopped();
    QStringList unreadBlocks() const;

    TransferParts m_parts;
    AttemptFailed m_attemptFailed;
    ReadReport m_report;
    Purpose m_purpose = Purpose::Show;
    int m_answered = 0;               // entries with a sound reply
    std::optional<int> m_modelSeenAt; // opening of the port
    bool m_isSilent = true;           // no byte has come yet
    bool m_bCancel = false;
    bool m_imageComplete = true;
    quint8 m_functionCode = 0; // of the request that was built
    Result m_lResult = Result::Success;
};
