#include "ComPortOption.h"
#include "Table.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using platform::ComPortOption;
using State = ComPortOption::State;

namespace {

const QByteArray kAgreed = "FFFD2C FFFD00 FFFB00";
const QByteArray kSet =
    "FFFA2C0508FFF0 FFFA2C050CFFF0 FFFA2C0100004B00FFF0 FFFA2C0207FFF0 FFFA2C0303FFF0 FFFA2C0402FFF0"
    "FFFA2C0501FFF0";
const QByteArray kAnswers = "FFFA2C6500004B00FFF0 FFFA2C6607FFF0 FFFA2C6703FFF0 FFFA2C6802FFF0 FFFA2C6901FFF0";

QByteArray bytes(const QByteArray& hex)
{
    return QByteArray::fromHex(hex);
}

// 19200, 7 bits, even parity, 2 stop bits, DTR on, RTS off; what is asked at the beginning is taken already.
ComPortOption started()
{
    platform::LineSettings settings;
    settings.speed = 19200;
    settings.format = *platform::parseLineFormat("E,7,2");
    settings.dtr = true;
    ComPortOption option;
    option.start(settings);
    EXPECT_EQ(option.takeOutput().toHex(), bytes("FFFB2C FFFB00 FFFB03 FFFD00 FFFD03").toHex());
    return option;
}

TEST(ComPortOption, AgreesAndSetsTheLine)
{
    for (QStringList row : tableRows("platform/com_port_option.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        row.replaceInStrings(QRegularExpression("^-$"), "");
        for (const qsizetype piece : {qsizetype(1000), qsizetype(1)}) {
            ComPortOption option = started();
            const QByteArray received =
                bytes(row[1].toLatin1().replace("AGREED", kAgreed).replace("ANSWERS", kAnswers));
            QByteArray data;
            for (qsizetype i = 0; i < received.size(); i += piece)
                data += option.receive(received.mid(i, piece));
            EXPECT_EQ(data.toHex(), bytes(row[2].toLatin1()).toHex());
            EXPECT_EQ(option.takeOutput().toHex(), bytes(row[3].toLatin1().replace("SET", kSet)).toHex());
            EXPECT_EQ(option.state(), row[4] == "Ready"    ? State::Ready
                                      : row[4] == "Failed" ? State::Failed
                                                           : State::Negotiating);
            EXPECT_TRUE(option.reason().contains(row[5]) && option.reason().isEmpty() == row[5].isEmpty())
                << qPrintable(option.reason());
        }
    }
}

TEST(ComPortOption, DoublesIacInDataAndValues)
{
    EXPECT_EQ(ComPortOption::escape(bytes("01FF02FFFF")).toHex(), "01ffff02ffffffff");
    platform::LineSettings settings;
    settings.speed = 0xFF00;
    ComPortOption option;
    option.set(settings);
    EXPECT_TRUE(option.takeOutput().contains(bytes("FFFA2C010000FFFF00FFF0")));
    EXPECT_EQ(option.receive(bytes("FFFA2C650000FFFF00FFF0")), "");
    EXPECT_EQ(option.reason(), "");
}

TEST(ComPortOption, ASubnegotiationWithoutAnEndIsNotKept)
{
    ComPortOption option = started();
    EXPECT_EQ(option.receive(bytes("FFFA2C65") + QByteArray(1000000, 'x')), "");
    EXPECT_EQ(option.receive(bytes("FFF0") + "on"), "on") << "and what follows it is read";
    EXPECT_EQ(option.state(), State::Negotiating);
}

} // namespace
