#include "ComPortOption.h"

#include <gtest/gtest.h>

using platform::ComPortOption;
using State = ComPortOption::State;

namespace {

const QByteArray kAgreed = "FFFD2C FFFD00 FFFB00"; // DO COM-PORT, DO BINARY, WILL BINARY
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

// Frames by RFC 854 and RFC 2217.
TEST(ComPortOption, AgreesAndSetsTheLine)
{
    const QByteArray set = "FFFA2C0508FFF0 FFFA2C050CFFF0 FFFA2C0100004B00FFF0 FFFA2C0207FFF0 FFFA2C0303FFF0 "
                           "FFFA2C0402FFF0 FFFA2C0501FFF0";
    const struct
    {
        const char* name;
        QByteArray received;
        QByteArray data;
        QByteArray sent;
        State state;
        const char* reason;
    } rows[] = {
        {"not yet binary", "FFFD2C", "", set, State::Negotiating, ""},
        {"not yet set", kAgreed, "", set, State::Negotiating, ""},
        {"no word of DTR and RTS", kAgreed + kAnswers, "", set, State::Ready, ""},
        {"DTR and RTS", kAgreed + "FFFA2C6908FFF0 FFFA2C690CFFF0" + kAnswers, "", set, State::Ready, ""},
        {"DTR stays off", kAgreed + "FFFA2C6909FFF0", "", set, State::Failed, "DTR"},
        {"one stop bit", kAgreed + "FFFA2C6801FFF0", "", set, State::Failed, "this format"},
        {"another speed", kAgreed + "FFFA2C6500002580FFF0", "", set, State::Failed, "this speed"},
        {"speed without a value", kAgreed + "FFFA2C65FFF0", "", set, State::Failed, "this speed"},
        {"no option", "FFFE2C", "", "", State::Failed, "refuses the COM port option"},
        {"no binary", "FFFC00", "", "", State::Failed, "refuses the COM port option"},
        {"echo and a window size", "FFFB01 FFFD1F FFFC01", "", "FFFE01 FFFC1F", State::Negotiating, ""},
        {"the same twice", "FFFD03 FFFD03 FFFB03 FFFB03", "", "", State::Negotiating, ""},
        {"what is on goes off", "FFFB03 FFFC03 FFFC03", "", "FFFE03", State::Negotiating, ""},
        {"data, IAC and an idle command", "41FFFF42FFF143", "41FF4243", "", State::Negotiating, ""},
        {"what no one asked", "FFFA2C6B30FFF0 FFFA2C65FFF0 FFFA18014142FFF0 42", "42", "", State::Negotiating, ""},
        {"a command breaks it off", "FFFA2C65FFFE2C42", "42", "", State::Failed, "refuses the COM port option"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const qsizetype piece : {qsizetype(1000), qsizetype(1)}) {
            ComPortOption option = started();
            const QByteArray received = bytes(row.received);
            QByteArray data;
            for (qsizetype i = 0; i < received.size(); i += piece)
                data += option.receive(received.mid(i, piece));
            EXPECT_EQ(data.toHex(), bytes(row.data).toHex());
            EXPECT_EQ(option.takeOutput().toHex(), bytes(row.sent).toHex());
            EXPECT_EQ(option.state(), row.state);
            EXPECT_TRUE(option.reason().contains(row.reason) && option.reason().isEmpty() == !*row.reason)
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
