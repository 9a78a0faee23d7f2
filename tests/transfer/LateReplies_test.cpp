#include "FaultMatrixFixture.h"

#include <QTimer>

namespace {

// Registers whose replies differ in nothing but their values.
class LikeReplies : public FaultMatrixFixture
{
protected:
    void writeDefinition() override
    {
        QByteArray screen = "[Setting]\nDataMaxCount=3\nBlockMaxCount=1\nMaxRow=9\n[BlockInfo1]\nBlockNo=1\nName=SV\n";
        QByteArray comm;
        for (int n = 1; n <= 3; ++n) {
            const QByteArray number = QByteArray::number(n);
            screen += dataSection(n, "BlockNo=1\nDataLen=2\n") + "Tag=R" + number + "\nCommRaedSection=S" + number +
                      "\nDefaultData=" + number + "00\nCellData=" + number + ",1,vbWhite,vbBlack\n";
            comm += "[S" + number + "]\nReadCmd1=GetAnalogInput,3000" + number + ",1,R" + number + "\nWriteCmdMax=0\n";
        }
        put(definition(QStringLiteral("M.ini")), screen);
        put(definition(QStringLiteral("MComm.ini")), comm);
    }
};

class LateReplies : public LikeReplies, public ::testing::WithParamInterface<const char*>
{};

TEST_P(LateReplies, AreNotTakenForThoseOfAnotherRegister)
{
    for (const int mode : {0, 1}) {
        start(mode);
        setFault(QLatin1String(GetParam()));
        for (int round = 0; round < 3; ++round) {
            engine->getDataFromKX(nullptr);
            EXPECT_EQ(wrongImages().join(u' ').toStdString(), "") << "mode " << mode << ", round " << round;
            box.clock.setNow(box.clock.now().addSecs(round == 0 ? 3600 : -7200)); // somebody sets the machine's clock
        }
        setFault(QString());
        engine->getDataFromKX(nullptr);
        EXPECT_EQ(images().toStdString(), "all");
        EXPECT_EQ(engine->lastRead().failures, 0);
        EXPECT_EQ(grid.cell(2, 1).text.toStdString(), "200");
    }
}

// The time-out is 5 s.
INSTANTIATE_TEST_SUITE_P(Delays, LateReplies,
                         ::testing::Values("delay:6500", "delay:7900", "delay:9900", "delay:12500", "delay:17300",
                                           "delay:6500@every2", "delay:8500@every3"),
                         [](const auto& row) { return "Delay" + std::to_string(row.index); });

// Waiting is for replies that may still come: an answer that is only damaged costs no time.
TEST_F(LikeReplies, DamagedAnswersCostNoTime)
{
    start(0);
    const QDateTime before = box.clock.now();
    setFault(QStringLiteral("corrupt@every2"));
    engine->getDataFromKX(nullptr);
    EXPECT_GT(engine->lastRead().failures, 0);
    EXPECT_EQ(images().toStdString(), "all");
    EXPECT_LT(before.secsTo(box.clock.now()), 2);
}

// Cancel while late replies pass: the request that waits for them does not go out.
TEST_F(LikeReplies, CancelEndsTheWaitForLateReplies)
{
    start(0);
    setFault(QStringLiteral("silent@every1"));
    engine->getDataFromKX(nullptr);
    setFault(QString());
    const int sent = engine->lastRead().requests;
    QTimer::singleShot(0, engine.get(), [this] { engine->ProgCancel(0); });
    engine->getDataFromKX(nullptr);
    EXPECT_GT(sent, 0);
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Cancelled);
    EXPECT_EQ(engine->lastRead().requests, 0);
}

} // namespace
