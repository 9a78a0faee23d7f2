#include "TraceDecoder.h"

#include "FrameTexts.h"
#include "ModbusFrame.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QString english(const QString& text)
{
    return text;
}

// The line of a frame: "S 0103..." or "R ..." accepted, "E ..." not; "!" in front: as it stands, else the check value
// is added.
QString lineOf(const QString& frame, bool ascii)
{
    const QChar kind = frame[0];
    const QString digits = frame.mid(2);
    QByteArray wire;
    if (digits.startsWith(u'!'))
        wire = QByteArray::fromHex(digits.mid(1).toLatin1());
    else if (!digits.isEmpty())
        wire = modbusframe::toWire(QByteArray::fromHex(digits.toLatin1()), ascii);
    const char* tag = kind == u'S' ? "(Dirct)S:" : kind == u'R' ? "(Scces)R:" : "(Error)R:";
    return QLatin1String(tag) + QString::fromLatin1(wire.toHex().toUpper());
}

// "direction slave/function/address/count/data: remark"
QString shown(const FrameFields& f)
{
    const auto number = [](const std::optional<int>& n) { return n ? QString::number(*n) : QStringLiteral("-"); };
    return frametexts::direction(f, english) + u' ' + number(f.slave) + u'/' + number(f.function) + u'/' +
           frametexts::address(f) + u'/' + number(f.count) + u'/' + QString::fromLatin1(f.data.toHex()) +
           QStringLiteral(": ") + frametexts::remark(f, english);
}

struct Row
{
    const char* name;
    const char* request; // empty: none before
    const char* reply;
    const char* seen;
};

// The last line of each row in both modes; sizes and check values that differ stand in a table of their own.
TEST(TraceDecoder, RepliesInBothModes)
{
    const Row rows[] = {
        {"memory read", "S 01420000 00FBC004", "R 014200044B583431", "Received 1/66/FBC0/4/4b583431: "},
        {"memory written", "S 014201000080000255AA", "R 0142010000800002", "Received 1/66/8000/2/: "},
        {"memory written elsewhere", "S 014201000080000255AA", "R 0142010000810002",
         "Received 1/66/8100/2/: confirms something else than was sent"},
        {"coils", "S 010100000009", "R 0101020102", "Received 1/1/0000/9/0102: "},
        {"inputs", "S 010200040001", "R 01020101", "Received 1/2/0004/1/01: "},
        {"registers", "S 01030000000A", "R 010314000102030405060708090A0B0C0D0E0F10111213",
         "Received 1/3/0000/10/000102030405060708090a0b0c0d0e0f10111213: "},
        {"input register", "S 010400000001", "R 0104020102", "Received 1/4/0000/1/0102: "},
        {"coil", "S 01050000FF00", "R 01050000FF00", "Received 1/5/0000/-/ff00: "},
        {"register", "S 01060001002A", "R 01060001002A", "Received 1/6/0001/-/002a: "},
        {"other value", "S 01060001002A", "R 01060001002B",
         "Received 1/6/0001/-/002b: confirms something else than was sent"},
        {"many registers", "S 01100001000204000A0102", "R 011000010002", "Received 1/16/0001/2/: "},
        {"floats read", "S 01460000000001", "R 014600040000803F", "Received 1/70/0000/1/0000803f: "},
        {"floats written", "S 01470000000001040000803F", "R 01470000000001", "Received 1/71/0000/1/: "},
        {"refused", "S 01030000000A", "E 018302",
         "Received 1/3/0000/10/: the controller refused (exception 2): illegal data address"},
        {"refused for an unknown reason", "S 01030000000A", "E 018363",
         "Received 1/3/0000/10/: the controller refused (exception 99): unknown"},
        {"other slave", "S 010400000001", "R 0204020102", "Received 2/4/0000/1/0102: slave 2 answers instead of 1"},
        {"other function", "S 010400000001", "R 0103020102", "Received 1/3//-/0102: answers function 3 instead of 4"},
        {"no reply", "S 010400000001", "E ", "Received 1/4/0000/1/: no reply"},
        {"late", "S 010400000001", "E 0104020102",
         "Received 1/4/0000/1/0102: sound, but it answers another request or came too late"},
        {"beginning of the log", "", "R 0104020102", "Received 1/4//-/0102: "},
        {"switch write without a line", "S 01060001002A", "R 01050000FF00", "Received 1/5/0000/-/ff00: "},
        {"the request", "", "S 014200000100000E", "Sent 1/66/10000/14/: "},
        {"unknown function", "", "S 012B0E01", "Sent 1/43//-/0e01: "},
    };
    for (const bool ascii : {false, true}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (ascii ? " ASCII" : " RTU"));
            TraceDecoder decoder;
            if (*row.request != '\0')
                decoder.take(lineOf(QString::fromLatin1(row.request), ascii));
            const FrameFields fields = decoder.take(lineOf(QString::fromLatin1(row.reply), ascii));
            EXPECT_EQ(shown(fields), QString::fromLatin1(row.seen));
            EXPECT_EQ(fields.isError(), !QString::fromLatin1(row.seen).endsWith(QStringLiteral(": ")));
            EXPECT_TRUE(fields.wire.isEmpty() || (fields.isCheckRight() && fields.ascii == ascii));
        }
    }
}

// The request of the rows below: RTU 01 04 0000 0001, whose reply has 7 bytes on the line, in ASCII 15.
TEST(TraceDecoder, BrokenReplies)
{
    const struct
    {
        const char* name;
        bool ascii;
        QByteArray wire;
        const char* remark;
    } rows[] = {
        {"wrong CRC", false, QByteArray::fromHex("01040201020000"), "CRC wrong: 0000 instead of 3961"},
        {"one byte missing", false, QByteArray::fromHex("010402013961"), "cut off: 6 of 7 bytes"},
        {"three bytes", false, QByteArray::fromHex("010402"), "cut off: 3 of 7 bytes"},
        {"one byte", false, QByteArray::fromHex("01"), "cut off: 1 of 7 bytes"},
        {"bytes behind it", false, QByteArray::fromHex("01040201023961FFFF"), "too long: 9 instead of 7 bytes"},
        {"wrong LRC", true, ":010402010200\r\n", "LRC wrong: 00 instead of F6"},
        {"cut in the middle", true, ":01040201", "cut off: 9 of 15 bytes"},
        {"cut to half a byte", true, ":0104020", "cut off: 8 of 15 bytes"},
        {"small letters", true, ":0104020102f6\r\n", "no frame: 15 bytes"},
        {"no colon", true, "0104020102F6\r\n\r", "no frame: 15 bytes"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TraceDecoder decoder;
        decoder.take(lineOf(QStringLiteral("S 010400000001"), row.ascii));
        const FrameFields fields =
            decoder.take(QStringLiteral("(Error)R:") + QString::fromLatin1(row.wire.toHex().toUpper()));
        EXPECT_EQ(frametexts::remark(fields, english), QString::fromLatin1(row.remark));
        EXPECT_TRUE(fields.isError());
    }
}

// A request is sent again without a line of its own, until its reply is taken.
TEST(TraceDecoder, RetriesBelongToOneRequest)
{
    TraceDecoder decoder;
    const auto take = [&](const char* frame) { return shown(decoder.take(lineOf(QLatin1String(frame), false))); };
    take("S 010400000001");
    EXPECT_EQ(take("R !01040201020000"), u"Received 1/4/0000/1/0102: CRC wrong: 0000 instead of 3961");
    EXPECT_EQ(take("E !01040201020000"), u"Rejected 1/4/0000/1/0102: CRC wrong: 0000 instead of 3961");
    EXPECT_EQ(take("E "), u"Received 1/4/0000/1/: no reply");
    EXPECT_EQ(take("R 0104020102"), u"Received 1/4/0000/1/0102: ");
    EXPECT_EQ(take("E 0104020102"),
              u"Rejected 1/4/0000/1/0102: sound, but it answers another request or came too late");
    EXPECT_EQ(take("R 0104020102"), u"Received 1/4/0000/1/0102: ");
    EXPECT_EQ(take("R 01060001002A"), u"Received 1/6/0001/-/002a: ") << "the request before it has its answer";
}

TEST(TraceDecoder, OtherLines)
{
    const struct
    {
        const char* line;
        const char* seen;
        bool error;
    } rows[] = {
        {"[KXClassTrace]block 3", "Note -/-//-/: [KXClassTrace]block 3", false},
        {"Original :8000:55AA", "Memory -/-/8000/2/55aa: before the write", false},
        {"WriteData:8000:0102", "Memory -/-/8000/2/0102: to be written", false},
        {"WriteData:Main:0102", "Note -/-//-/: WriteData:Main:0102", false},
        {"(Dirct)S:01G2", "Sent -/-//-/: the line of the log is damaged: (Dirct)S:01G2", true},
        {"(Scces)R:014", "Received -/-//-/: the line of the log is damaged: (Scces)R:014", true},
        {"(Scces", "Note -/-//-/: (Scces", false},
        {"", "Note -/-//-/: ", false},
    };
    TraceDecoder decoder;
    for (const auto& row : rows) {
        const FrameFields fields = decoder.take(QString::fromLatin1(row.line));
        EXPECT_EQ(shown(fields), QString::fromLatin1(row.seen));
        EXPECT_EQ(fields.isError(), row.error) << row.line;
    }
}

// Any bytes, as a request and as a reply to it: nothing is read past their end (the sanitizers watch), and what has no
// right check value never passes as sound.
TEST(TraceDecoder, NoiseIsNeverSound)
{
    std::mt19937 random(7);
    const char* const requests[] = {"0103", "014200", "0146", "3A42", "01420000", "0110", "3A3031"};
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = QByteArray::fromHex(requests[random() % std::size(requests)]);
        const auto more = random() % (i % 100 == 0 ? 1200 : 20);
        for (unsigned k = 0; k < more; ++k)
            bytes += static_cast<char>(random());
        TraceDecoder decoder;
        decoder.take(QStringLiteral("(Dirct)S:") + QString::fromLatin1(bytes.toHex().toUpper()));
        const FrameFields fields =
            decoder.take(QStringLiteral("(Scces)R:") + QString::fromLatin1(bytes.toHex().toUpper()));
        ASSERT_TRUE(fields.isError() || fields.isCheckRight()) << bytes.toHex().constData();
        ASSERT_FALSE(frametexts::details(fields, QString(), english).isEmpty());
    }
}

} // namespace
