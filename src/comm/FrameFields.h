#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// One line of the trace log, taken apart: which way a frame went, what its fields say, and what is wrong with it.
// Fields that a frame lacks, because it is too short or has none such, are not set.
struct FrameFields
{
    enum class Direction {
        Sent,
        SentAgain, // the request before, of which the log keeps no second line
        Received,
        Rejected, // the reply of the line before once more: the program did not accept it
        Memory,   // no frame: an image of the controller's memory around a write
        Note      // no frame: any other line
    };

    enum class Fault {
        None,
        DamagedLine, // the line holds no bytes in hexadecimal digits
        NoReply,
        NoFrame, // bytes that are no frame of the mode in use
        Truncated,
        TooLong,
        WrongCheck, // CRC or LRC
        OtherSlave,
        OtherFunction,
        Exception,  // the controller refused
        OtherEcho,  // a write was confirmed with something else than what was sent
        NotAccepted // nothing is wrong with the frame, but the program did not accept it
    };

    Direction direction = Direction::Note;
    QString line; // as it stands in the log
    QByteArray wire;
    bool ascii = false;
    std::optional<int> slave;
    std::optional<int> function; // without the mark of an exception
    std::optional<int> exception;
    std::optional<quint32> address; // of a read's reply: as it was asked for
    std::optional<int> count;
    QByteArray data;
    QByteArray check;        // as it came; empty when the frame is too short for one
    QByteArray rightCheck;   // as it should be
    qsizetype wireBytes = 0; // that the frame should have on the line; 0: not known
    std::optional<int> askedSlave;
    std::optional<int> askedFunction;
    bool writesMemory = false; // function 66
    Fault fault = Fault::None;

    bool isError() const { return fault != Fault::None; }
    bool isWrite() const;
    // The reference number of the address, as comm files have it; nothing for memory.
    std::optional<int> reference() const;
    bool isCheckRight() const { return !check.isEmpty() && check == rightCheck; }

    // The fields of what went to the controller, and of what it answered. request: null when it is not known. Any bytes
    // may be given.
    static FrameFields ofRequest(const QByteArray& wire);
    static FrameFields ofReply(const QByteArray& wire, const FrameFields* request);

private:
    void parseWire(bool isAscii);
    void parseRequest();
    void parseReply(const FrameFields* request);
    void parseReplyData(const FrameFields* request);
    void parseException();
    void judge(const FrameFields* request);
    std::optional<int> byteAt(qsizetype index) const;
    std::optional<int> wordAt(qsizetype index) const;
    void parseAddress(qsizetype index, int bytes);
    qsizetype replyBytes() const;
    qsizetype ownBytes() const;
    bool confirms(const FrameFields& request) const;

    QByteArray m_frame; // binary, without the check value
};
