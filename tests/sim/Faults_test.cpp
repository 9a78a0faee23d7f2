#include "Faults.h"

#include "clsModbus.h"

#include <gtest/gtest.h>

namespace {

TEST(FaultTexts, AreAcceptedOrExplained)
{
    for (const char* text :
         {"silent", "truncate@every3", "delay:1", "delay:3600000@every2", "reset@every9", "exception:255"})
        EXPECT_TRUE(Faults(1).add(QLatin1String(text)).ok()) << text;
    for (const char* text :
         {"exception", "exception:0", "delay:0", "reset:", "silent@1.5", "silent@", "silent@every0", "unheard", ""})
        EXPECT_FALSE(Faults(1).add(QLatin1String(text)).ok()) << text;
}

TEST(Faults, StrikeEveryNthReply)
{
    for (const auto& [text, pattern] :
         {std::pair("silent@every3", "..x..x..x..x"), {"silent", "xxxxxxxxxxxx"}, {"silent@0", "............"}}) {
        Faults faults(1);
        EXPECT_TRUE(faults.add(QLatin1String(text)).ok());
        QByteArray seen;
        for (int i = 0; i < 12; ++i)
            seen += faults.next().silent ? 'x' : '.';
        EXPECT_EQ(seen, pattern) << text;
    }
}

// The error code of a master that awaits this reply.
int checked(const QByteArray& reply, bool ascii)
{
    clsModbus master;
    master.setTransmissionMode(ascii ? 1 : 0);
    master.setSlaveAddress(1);
    master.WriteAnalogSetValue(40001, 5);
    QByteArray bytes = reply;
    master.SetRecvMessage(bytes, static_cast<qint32>(bytes.size()));
    return master.ErrorCode();
}

TEST(Damage, IsRepeatableAndSeenByAMaster)
{
    for (const bool ascii : {false, true}) {
        const QByteArray sound = ascii ? QByteArray(":010600000005F4\r\n") : QByteArray::fromHex("01060000000549C9");
        ASSERT_EQ(checked(sound, ascii), clsModbus::kNoError);
        const auto damaged = [&](const char* fault, unsigned seed) {
            Faults faults(seed);
            EXPECT_TRUE(faults.add(QLatin1String(fault)).ok()) << fault;
            const Faults::Verdict verdict = faults.next();
            return faults.damaged(sound, verdict, ascii);
        };
        for (const char* fault : {"silent", "reset", "drop", "corrupt", "truncate", "wrong-slave", "noise"}) {
            for (unsigned seed = 0; seed < 50; ++seed) {
                const QByteArray reply = damaged(fault, seed);
                // The line feed at the end of an ASCII frame is not examined.
                EXPECT_TRUE(checked(reply, ascii) != clsModbus::kNoError || reply.chopped(1) == sound.chopped(1) ||
                            reply == sound.chopped(1))
                    << fault << seed;
                EXPECT_NE(reply, sound) << fault << seed;
                EXPECT_EQ(reply, damaged(fault, seed)) << fault;
            }
        }
        EXPECT_EQ(damaged("delay:100", 1), sound);
        EXPECT_TRUE(damaged("extra", 1).startsWith(sound));
    }
}

} // namespace
