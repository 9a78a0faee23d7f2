#include "Faults.h"

#include "clsModbus.h"

#include <gtest/gtest.h>

#include <bit>

namespace {

struct FaultText
{
    const char* text;
    bool valid;
};

class FaultTexts : public ::testing::TestWithParam<FaultText>
{};

TEST_P(FaultTexts, AreTakenOrExplained)
{
    Faults faults(1);
    QString error;
    EXPECT_EQ(faults.add(QString::fromLatin1(GetParam().text), error), GetParam().valid);
    EXPECT_EQ(error.isEmpty(), GetParam().valid) << qPrintable(error);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FaultTexts,
    ::testing::Values(FaultText{"silent", true}, FaultText{"corrupt@0.5", true}, FaultText{"truncate@every3", true},
                      FaultText{"exception:2@every1", true}, FaultText{"drop@0.1", true}, FaultText{"extra", true},
                      FaultText{"delay:1", true}, FaultText{"delay:3600000@every2", true},
                      FaultText{"wrong-slave@1", true}, FaultText{"noise", true}, FaultText{"reset@every9", true},
                      FaultText{"exception", false}, FaultText{"exception:0", false}, FaultText{"exception:256", false},
                      FaultText{"delay", false}, FaultText{"delay:0", false}, FaultText{"delay:3600001", false},
                      FaultText{"delay:1s", false}, FaultText{"silent:1", false}, FaultText{"reset:", false},
                      FaultText{"silent@1.5", false}, FaultText{"silent@", false}, FaultText{"silent@every0", false},
                      FaultText{"silent@everyx", false}, FaultText{"unheard", false}, FaultText{"", false}));

QByteArray pattern(const char* text, unsigned seed)
{
    Faults faults(seed);
    QString error;
    faults.add(QString::fromLatin1(text), error);
    QByteArray result;
    for (int i = 0; i < 12; ++i)
        result += faults.next().silent ? 'x' : '.';
    return result;
}

TEST(Faults, StrikeEveryNthReply)
{
    EXPECT_EQ(pattern("silent@every3", 1), "..x..x..x..x");
    EXPECT_EQ(pattern("silent", 1), "xxxxxxxxxxxx");
    EXPECT_EQ(pattern("silent@0", 1), "............");
}

TEST(Faults, RepeatWithTheSameSeed)
{
    EXPECT_EQ(pattern("silent@0.5", 7), pattern("silent@0.5", 7));
    EXPECT_NE(pattern("silent@0.5", 7), pattern("silent@0.5", 8));
}

int differingBits(const QByteArray& left, const QByteArray& right)
{
    int bits = 0;
    for (qsizetype i = 0; i < std::min(left.size(), right.size()); ++i)
        bits += std::popcount(static_cast<quint8>(left[i] ^ right[i]));
    return bits;
}

bool lacksOneByte(const QByteArray& sound, const QByteArray& damaged)
{
    qsizetype place = 0;
    while (place < damaged.size() && damaged[place] == sound[place])
        ++place;
    return damaged.size() == sound.size() - 1 && damaged == QByteArray(sound).remove(place, 1);
}

// The error code of a master that awaits a reply of this slave.
int checkedBy(int slave, QByteArray reply, bool ascii)
{
    clsModbus master;
    master.setTransmissionMode(ascii ? 1 : 0);
    master.setSlaveAddress(slave);
    master.WriteAnalogSetValue(40001, 5);
    const auto size = static_cast<qint32>(reply.size());
    master.SetRecvMessage(reply, size);
    return master.ErrorCode();
}

struct Damage
{
    const char* fault;
    bool (*fits)(const QByteArray& sound, const QByteArray& damaged, bool ascii);
};

void PrintTo(const Damage& row, std::ostream* out)
{
    *out << row.fault;
}

bool isSilence(const QByteArray& /*sound*/, const QByteArray& damaged, bool /*ascii*/)
{
    return damaged.isEmpty();
}

bool isWhole(const QByteArray& sound, const QByteArray& damaged, bool /*ascii*/)
{
    return damaged == sound;
}

const Damage kDamages[] = {
    {"silent", isSilence},
    {"reset", isSilence},
    {"delay:100", isWhole},
    {"exception:2", isWhole},
    {"drop", [](const QByteArray& sound, const QByteArray& damaged, bool) { return lacksOneByte(sound, damaged); }},
    {"corrupt", [](const QByteArray& sound, const QByteArray& damaged,
                   bool) { return damaged.size() == sound.size() && differingBits(sound, damaged) == 1; }},
    {"truncate",
     [](const QByteArray& sound, const QByteArray& damaged, bool) { return damaged == sound.left(sound.size() / 2); }},
    {"extra",
     [](const QByteArray& sound, const QByteArray& damaged, bool) {
         const qsizetype more = damaged.size() - sound.size();
         return damaged.startsWith(sound) && more >= 1 && more <= 4;
     }},
    {"wrong-slave",
     [](const QByteArray&, const QByteArray& damaged, bool ascii) {
         return checkedBy(1, damaged, ascii) == clsModbus::kBadReply &&
                checkedBy(2, damaged, ascii) == clsModbus::kNoError;
     }},
    {"noise", [](const QByteArray& sound, const QByteArray& damaged,
                 bool) { return damaged.size() == sound.size() && differingBits(sound, damaged) > 8; }},
};

class Damages : public ::testing::TestWithParam<std::tuple<Damage, bool>>
{};

TEST_P(Damages, AreOfTheirKindWithEverySeed)
{
    const Damage& row = std::get<0>(GetParam());
    const bool ascii = std::get<1>(GetParam());
    const QByteArray sound = ascii ? QByteArray(":010600000005F4\r\n") : QByteArray::fromHex("01060000000549C9");
    ASSERT_EQ(checkedBy(1, sound, ascii), clsModbus::kNoError);
    const auto damagedBy = [&](unsigned seed) {
        Faults faults(seed);
        QString error;
        faults.add(QString::fromLatin1(row.fault), error);
        const Faults::Verdict verdict = faults.next();
        return faults.damaged(sound, verdict, ascii);
    };
    for (unsigned seed = 0; seed < 50; ++seed) {
        const QByteArray damaged = damagedBy(seed);
        EXPECT_TRUE(row.fits(sound, damaged, ascii)) << seed << ": " << damaged.toHex().constData();
        EXPECT_EQ(damaged, damagedBy(seed)) << "repeatable";
    }
}

INSTANTIATE_TEST_SUITE_P(All, Damages, ::testing::Combine(::testing::ValuesIn(kDamages), ::testing::Bool()));

} // namespace
