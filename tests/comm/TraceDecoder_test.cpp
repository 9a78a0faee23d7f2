#include "TraceDecoder.h"

#include "FrameTexts.h"
#include "ModbusFrame.h"
#include "Table.h"

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

// The last line of each row.
TEST(TraceDecoder, RepliesInBothModes)
{
    for (const bool ascii : {false, true}) {
        for (const QStringList& row : tableRows("comm/trace_replies.tsv")) {
            SCOPED_TRACE(row[0].toStdString() + (ascii ? " ASCII" : " RTU"));
            TraceDecoder decoder;
            if (!row[1].isEmpty())
                decoder.decode(lineOf(row[1], ascii));
            const FrameFields fields = decoder.decode(lineOf(row[2], ascii));
            EXPECT_EQ(shown(fields).toStdString(), (row[3] + QStringLiteral(": ") + row[4]).toStdString());
            EXPECT_EQ(fields.isError(), !row[4].isEmpty());
            EXPECT_TRUE(fields.wire.isEmpty() || (fields.isCheckRight() && fields.ascii == ascii));
        }
    }
}

// A read is sent again without a line of its own, until its reply is taken.
TEST(TraceDecoder, RetriesBelongToOneRequest)
{
    TraceDecoder decoder;
    const auto take = [&](const char* frame) { return shown(decoder.decode(lineOf(QLatin1String(frame), false))); };
    const auto repeated = [&] { return decoder.repetition() ? shown(*decoder.repetition()) : QString(); };
    take("S 010400000001");
    EXPECT_EQ(take("R !01040201020000"), u"Received 1/4/0000/1/0102: CRC wrong: 0000 instead of 3961");
    EXPECT_EQ(take("E !01040201020000"), u"Rejected 1/4/0000/1/0102: CRC wrong: 0000 instead of 3961");
    EXPECT_EQ(repeated(), u"");
    EXPECT_EQ(take("E "), u"Received 1/4/0000/1/: no reply");
    EXPECT_EQ(repeated(), u"Sent again 1/4/0000/1/: ");
    EXPECT_EQ(take("R 0104020102"), u"Received 1/4/0000/1/0102: ");
    EXPECT_EQ(take("E 0104020102"),
              u"Rejected 1/4/0000/1/0102: valid, but it answers another request or came too late");
    EXPECT_EQ(take("R 0104020102"), u"Received 1/4/0000/1/0102: ");
    EXPECT_EQ(take("R 01060001002A"), u"Received 1/6/0001/-/002a: ") << "the request before it has its answer";
    take("S 01060001002A");
    take("E ");
    take("E ");
    EXPECT_EQ(repeated(), u"") << "a write is not repeated: that was another, without a line";
}

TEST(TraceDecoder, OtherLines)
{
    for (const QStringList& row : tableRows("comm/trace_lines.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        TraceDecoder decoder;
        if (!row[1].isEmpty())
            decoder.decode(lineOf(QStringLiteral("S 010400000001"), row[1] == u"ascii"));
        const FrameFields fields = decoder.decode(row[2]);
        EXPECT_EQ(shown(fields).toStdString(), (row[3] + QStringLiteral(": ") + row[4]).toStdString());
        EXPECT_EQ(fields.isError(), row[5] == u"error");
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
        const QString digits = QString::fromLatin1(bytes.toHex().toUpper());
        decoder.decode(QStringLiteral("(Dirct)S:") + digits);
        const FrameFields fields = decoder.decode(QStringLiteral("(Scces)R:") + digits);
        ASSERT_TRUE(fields.isError() || fields.isCheckRight()) << bytes.toHex().constData();
        ASSERT_FALSE(frametexts::details(fields, QString(), QString(), english).isEmpty());
    }
}

} // namespace
