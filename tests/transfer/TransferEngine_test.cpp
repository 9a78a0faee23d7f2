#include "TransferEngine.h"

#include "../screen/ScreenFixture.h"
#include "ComPorts.h"
#include "IdleClock.h"
#include "ScriptedController.h"
#include "clsLog.h"
#include "uclComm.h"

#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

namespace {

const QByteArray kModel = "KX41000000-10A";

QByteArray rtu(QByteArray frame)
{
    const auto length = static_cast<qint32>(frame.size());
    frame.append(2, '\0');
    clsModbus::MakeCRC16(frame, length);
    return frame;
}

// A controller with the model string at FBC0 and the bytes 01 02 03 ... at every other address.
QByteArray soundReply(const QByteArray& request)
{
    const QByteArray head = request.left(2);
    if (static_cast<quint8>(request.at(1)) != 66)
        return rtu(head + QByteArray::fromHex("02002A"));
    const int count = static_cast<quint8>(request.at(7));
    QByteArray data;
    if (request.mid(3, 4) == QByteArray::fromHex("0000FBC0"))
        data = kModel;
    for (int i = static_cast<int>(data.size()); i < count; ++i)
        data.append(static_cast<char>(i + 1));
    return rtu(head + QByteArray(1, '\0') + QByteArray(1, static_cast<char>(count)) + data.left(count));
}

class Recorder : public MessagePresenter, public ProgressView, public TransferShell
{
public:
    int present(const Message& message) override
    {
        messages << message.prompt;
        styles << message.style;
        return answer;
    }
    void open(int maximum, const QString&, const QString&, bool disableOwner, bool cancelButton) override
    {
        shown = disableOwner && cancelButton;
        maximumShown = maximum;
    }
    void setPosition(int position) override { lastPosition = position; }
    void setText(const QString&) override {}
    void close() override { shown = false; }
    MainState state() const override { return current; }
    void setState(MainState state) override { current = state; }
    int slaveAddress() const override { return 1; }
    int transmissionMode() const override { return 0; }
    QString modelPanel() const override { return panel; }
    void setConnectedModel(const QString& modelString) override { connected = modelString; }
    void showCommSetting() override { ++settingsShown; }

    QStringList messages;
    QList<int> styles;
    int answer = MessageResult::kYes;
    bool shown = false;
    int maximumShown = 0;
    int lastPosition = 0;
    MainState current = MainState::Confirmed;
    QString panel = QString::fromLatin1(kModel);
    QString connected;
    int settingsShown = 0;
};

class Read : public ScreenFixture
{
protected:
    void plug(const ScriptedController::Answer& answer)
    {
        controller = std::make_unique<ScriptedController>([this, answer](const QByteArray& request) {
            touchClock();
            return answer(request);
        });
        ports = std::make_unique<platform::ComPorts>(QProcessEnvironment());
        ports->assign(1, controller->device());
        open();
    }

    void open()
    {
        trace.setLogPath(box.machine.folders.program());
        trace.setLogFileName(QStringLiteral("Trc.log"));
        link = std::make_unique<uclComm>(*ports, box.clock);
        link->init(1, &library);
        load(QByteArray("[Setting]\nDataMaxCount=3\nMaxRow=5\n") +
                 dataSection(1, "Tag=MQCODE\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n"
                                "CellData=1,1,vbWhite,vbBlack") +
                 dataSection(2, "Tag=A\nDataLen=2\nKXAddress=8000\nCommRaedSection=Main\nCellData=2,1,vbWhite,vbBlack\n"
                                "DefaultData=7") +
                 dataSection(3, "Tag=B\nDataLen=2\nCommRaedSection=Reg\nCellData=3,1,vbWhite,vbBlack"),
             "[Id]\nReadCmd1=Direct,FBC0,14\n[Main]\nReadCmdMax=3\nReadCmd1=Direct,8000,4\nReadCmd2=Unknown,1,2\n"
             "ReadCmd3=Direct,,4\n[Reg]\nReadCmd1=GetAnalogInput,30001,1,B\n");
        engine = std::make_unique<TransferEngine>(TransferEngine::Parts{kx, *link, settings, trace, user, user, user});
    }

    // Lets the clock run while the engine waits, so that the link's time-out comes without anybody waiting for it.
    void runClockWhileWaiting() { idle.emplace(box.clock, 7000, 2); }
    void touchClock()
    {
        if (idle)
            idle->touch();
    }

    int traceLines(const char* tag)
    {
        return static_cast<int>(content(box.machine.folders.program() + QStringLiteral("\\Trc.log")).count(tag));
    }

    QString cell(int row) { return grid.cell(row, 1).text; }

    std::unique_ptr<ScriptedController> controller;
    std::unique_ptr<platform::ComPorts> ports;
    std::unique_ptr<uclComm> link;
    std::unique_ptr<TransferEngine> engine;
    clsLog trace{box.machine};
    Recorder user;
    std::optional<IdleClock> idle;
};

TEST_F(Read, FillsTheGrid)
{
    plug(soundReply);
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(cell(1), QString::fromLatin1(kModel));
    EXPECT_EQ(cell(2), u"258");
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(user.current, MainState::UpToDate);
    EXPECT_EQ(user.connected, QString::fromLatin1(kModel));
    EXPECT_EQ(controller->requests(), 3) << "unknown commands and empty addresses send nothing";
    EXPECT_EQ(user.maximumShown, 3);
    EXPECT_EQ(user.lastPosition, 3);
    EXPECT_FALSE(user.shown);
    EXPECT_TRUE(user.messages.isEmpty());
    EXPECT_FALSE(engine->isBusy());
    EXPECT_EQ(traceLines("(Dirct)S:"), 2);
    EXPECT_EQ(traceLines("(AlIpt)S:"), 1);
    EXPECT_EQ(traceLines("(Scces)R:"), 3);
}

TEST_F(Read, FiveBadRepliesThenAGoodOne)
{
    int asked = 0;
    plug([&asked](const QByteArray& request) {
        QByteArray reply = soundReply(request);
        if (++asked <= 5)
            reply[reply.size() - 1] = static_cast<char>(~reply.back());
        return reply;
    });
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(user.current, MainState::UpToDate);
    EXPECT_EQ(cell(2), u"258");
    EXPECT_EQ(traceLines("(Error)R:"), 5);
    EXPECT_EQ(traceLines("(Scces)R:"), 8);
    EXPECT_TRUE(engine->lastRead().givenUp.isEmpty());
}

struct WrongReplyCase
{
    const char* name;
    QByteArray (*reply)(const QByteArray& sound);
};

class WrongReply : public Read, public ::testing::WithParamInterface<WrongReplyCase>
{};

// Only the memory section is answered wrongly: it is given up after six sendings, and its item is shown empty.
TEST_P(WrongReply, IsNeverShownAsRead)
{
    int wrong = 0;
    plug([&wrong](const QByteArray& request) {
        const QByteArray sound = soundReply(request);
        if (request.mid(3, 4) != QByteArray::fromHex("00008000"))
            return sound;
        ++wrong;
        return GetParam().reply(sound);
    });
    runClockWhileWaiting();
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(wrong, 6);
    EXPECT_EQ(user.current, MainState::UpToDate);
    EXPECT_EQ(engine->lastRead().givenUp, QStringList{QStringLiteral("Main: Direct 8000")});
    EXPECT_EQ(cell(2), QString());
    EXPECT_EQ(cell(3), u"42") << "the read goes on";
    EXPECT_TRUE(user.messages.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, WrongReply,
    ::testing::Values(WrongReplyCase{"Silence", [](const QByteArray&) { return QByteArray(); }},
                      WrongReplyCase{"Half", [](const QByteArray& sound) { return sound.left(sound.size() / 2); }},
                      WrongReplyCase{
                          "OtherSlave",
                          [](const QByteArray& sound) { return rtu("\x02" + sound.mid(1, sound.size() - 3)); }},
                      WrongReplyCase{"Exception", [](const QByteArray&) { return rtu(QByteArray::fromHex("01C202")); }},
                      WrongReplyCase{"Noise", [](const QByteArray& sound) { return QByteArray(sound.size(), '\x55'); }},
                      WrongReplyCase{"OtherFunction",
                                     [](const QByteArray& sound) {
                                         return rtu(QByteArray::fromHex("0103") + sound.mid(2, sound.size() - 4));
                                     }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Read, OtherModelStops)
{
    plug(soundReply);
    user.panel = QStringLiteral("KX62000000-10A");
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("Model number is different.")});
    EXPECT_EQ(user.styles, QList<int>{MessageStyle::kCritical});
    EXPECT_EQ(user.settingsShown, 1);
    EXPECT_EQ(user.current, MainState::Confirmed);
    EXPECT_EQ(user.connected, QString::fromLatin1(kModel));
    EXPECT_EQ(controller->requests(), 1);
}

TEST_F(Read, ClosedPortIsRefused)
{
    ports = std::make_unique<platform::ComPorts>(QProcessEnvironment());
    ports->assign(1, QStringLiteral("/dev/no-such-adapter"));
    open();
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("Reception error occurred.[-1]")});
    EXPECT_EQ(user.current, MainState::Confirmed);
    EXPECT_FALSE(engine->lastRead().lastFailure.isEmpty());
}

TEST_F(Read, UnpluggedInTheMiddleStops)
{
    plug([this](const QByteArray& request) {
        if (request.mid(3, 4) == QByteArray::fromHex("00008000"))
            QTimer::singleShot(0, engine.get(), [this] { controller->unplug(); });
        else
            return soundReply(request);
        return QByteArray();
    });
    runClockWhileWaiting();
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(user.current, MainState::Confirmed);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("Reception error occurred.[-1]")});
    EXPECT_FALSE(engine->isBusy());
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

TEST_F(Read, CancelWhileAllIsWellCompletes)
{
    plug([this](const QByteArray& request) {
        engine->ProgCancel(0);
        return soundReply(request);
    });
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Complete);
    EXPECT_TRUE(user.messages.isEmpty());
}

TEST_F(Read, AbortEndsQuietly)
{
    plug([this](const QByteArray&) {
        QTimer::singleShot(0, engine.get(), [this] { engine->abort(); });
        return QByteArray();
    });
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Aborted);
    EXPECT_TRUE(user.messages.isEmpty());
    EXPECT_FALSE(user.shown);
}

TEST_F(Read, DeclinedSendsNothing)
{
    plug(soundReply);
    settings.m_bViewRecvConf = true;
    user.answer = MessageResult::kNo;
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_EQ(user.messages, QStringList{QStringLiteral("It reads out from the KX?")});
    EXPECT_EQ(user.current, MainState::NoConnection);
}

TEST_F(Read, OffLineTracesAndSendsNothing)
{
    plug(soundReply);
    settings.m_bComm = true;
    engine->getDataFromKX(nullptr);
    EXPECT_EQ(controller->requests(), 0);
    EXPECT_EQ(traceLines("(Dirct)S:"), 2);
    EXPECT_EQ(user.current, MainState::UpToDate);
    EXPECT_EQ(cell(2), u"7") << "the definition's default";
    EXPECT_EQ(cell(1), QString::fromLatin1(kModel));
}

} // namespace
