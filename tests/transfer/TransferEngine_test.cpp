#include "ScriptedController.h"
#include "SoundController.h"
#include "TransferFixture.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

using soundController::kModel;

class Read : public TransferFixture
{
protected:
    void plug(const ScriptedController::Answer& answer)
    {
        controller = std::make_unique<ScriptedController>([this, answer](const QByteArray& request) {
            touchClock();
            return answer(request);
        });
        ports.assign(1, controller->device());
        open();
    }

    void open()
    {
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        load(QByteArray("[Setting]\nDataMaxCount=3\nMaxRow=5\n") +
                 dataSection(1, "Tag=MQCODE\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n"
                                "CellData=1,1,vbWhite,vbBlack") +
                 dataSection(2, "Tag=A\nDataLen=2\nKXAddress=8000\nCommRaedSection=Main\nCellData=2,1,vbWhite,vbBlack\n"
                                "DefaultData=7") +
                 dataSection(3, "Tag=B\nDataLen=2\nCommRaedSection=Reg\nCellData=3,1,vbWhite,vbBlack"),
             "[Id]\nReadCmd1=Direct,FBC0,14\n[Main]\nReadCmdMax=3\nReadCmd1=Direct,8000,4\nReadCmd2=Unknown,1,2\n"
             "ReadCmd3=Direct,,4\n[Reg]\nReadCmd1=GetAnalogInput,30001,1,B\n");
        engine = std::make_unique<TransferEngine>(TransferEngine::Parts{kx, *link, settings, trace, user, user, state});
    }

    QString cell(int row) { return grid.cell(row, 1).text; }

    std::unique_ptr<ScriptedController> controller;
    std::unique_ptr<uclComm> link;
    std::unique_ptr<TransferEngine> engine;
    RecordingWindow user;
};

TEST_F(Read, FillsTheGrid)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(cell(1), QString::fromLatin1(kModel));
    EXPECT_EQ(cell(2), u"258");
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(state.state(), MainState::UpToDate);
    EXPECT_EQ(engine->lastRead().answeredModel, QString::fromLatin1(kModel));
    EXPECT_EQ(controller->requests(), 3) << "unknown commands and empty addresses send nothing";
    EXPECT_EQ(user.maximumShown, 3);
    EXPECT_EQ(user.positions.last(), 3);
    EXPECT_FALSE(user.progressShown);
    EXPECT_TRUE(user.messages.isEmpty());
    EXPECT_FALSE(engine->isBusy());
    EXPECT_EQ(traceLines("(Dirct)S:"), 2);
    EXPECT_EQ(traceLines("(AlIpt)S:"), 1);
    EXPECT_EQ(traceLines("(Scces)R:"), 3);
}

TEST_F(Read, UnpluggedInTheMiddleStops)
{
    plug([this](const QByteArray& request) {
        if (request.mid(3, 4) == QByteArray::fromHex("00008000"))
            QTimer::singleShot(0, engine.get(), [this] { controller->unplug(); });
        else
            return soundController::reply(request);
        return QByteArray();
    });
    runClockWhileWaiting();
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(state.state(), MainState::Confirmed);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("Reception error occurred.[-1]")});
    EXPECT_FALSE(engine->isBusy());
}

// Before the first request goes out, while events run.
TEST_F(Read, NothingIsSentBehindAnAbort)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    QTimer::singleShot(0, engine.get(), [this] { engine->abort(); });
    engine->getDataFromKX(nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_EQ(traceLines("S:"), 0);
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Aborted);
}

TEST_F(Read, AReplyThatAnnouncesAnotherNumberOfBytesIsRepeated)
{
    plug([this](const QByteArray& request) {
        return controller->requests() == 3 ? soundController::rtu(QByteArray::fromHex("0104000064"))
                                           : soundController::reply(request);
    });
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 4);
    EXPECT_EQ(cell(3), u"42");
}

TEST_F(Read, CancelIsHonouredAfterAFailure)
{
    plug([this](const QByteArray&) {
        engine->ProgCancel(0);
        return QByteArray();
    });
    runClockWhileWaiting();
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 1);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("It was cancelled.")});
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Cancelled);
}

TEST_F(Read, OffLineTracesAndSendsNothing)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    settings.m_bComm = true;
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_EQ(traceLines("(Dirct)S:"), 2);
    EXPECT_EQ(state.state(), MainState::UpToDate);
    EXPECT_EQ(cell(2), u"7") << "the definition's default";
    EXPECT_EQ(cell(1), QString::fromLatin1(kModel));
}

TEST_F(Read, DeclinedSendsNothing)
{
    plug([](const QByteArray& request) { return soundController::reply(request); });
    settings.m_bViewRecvConf = true;
    user.answer = MessageResult::kNo;
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("It reads out from the KX?")});
    EXPECT_EQ(state.state(), MainState::NoConnection);
}

} // namespace
