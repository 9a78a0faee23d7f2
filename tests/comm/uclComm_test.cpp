#include "uclComm.h"

#include "DetectionFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <tuple>

namespace {

const QByteArray kRequest = "request";
const QByteArray kReply = "0123456789";
const QString kNotIdle = QStringLiteral("アイドルではありません。");

const auto silence = [](const QByteArray&) { return QByteArray(); };

class Link : public DetectionFixture
{
protected:
    void plug(ScriptedController::Answer answer)
    {
        DetectionFixture::plug(std::move(answer));
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        good = std::make_unique<QSignalSpy>(link.get(), &uclComm::RecieveSuccess);
        bad = std::make_unique<QSignalSpy>(link.get(), &uclComm::RecieveError);
    }

    void expectReply()
    {
        ASSERT_TRUE(good->size() == 1 || good->wait());
        EXPECT_EQ(good->at(0), (QVariantList{kRequest, kReply + '\0'}));
        EXPECT_EQ(bad->size(), 0);
        EXPECT_EQ(link->State(), 1);
    }

    void expectOneError(const char* text)
    {
        ASSERT_TRUE(bad->size() == 1 || bad->wait());
        EXPECT_EQ(bad->at(0).at(2).toString(), QString::fromLatin1(text));
        box.clock.advance(60000);
        settle();
        EXPECT_EQ(bad->size(), 1);
        EXPECT_EQ(good->size(), 0);
    }

    std::unique_ptr<uclComm> link;
    std::unique_ptr<QSignalSpy> good;
    std::unique_ptr<QSignalSpy> bad;
};

TEST_F(Link, ReplyInPiecesAndOneRequestAtATime)
{
    plug(silence);
    link->sendMsg(kRequest, 10);
    EXPECT_EQ(link->sendMsg(kRequest, 10), kNotIdle);
    for (const char byte : kReply) {
        EXPECT_EQ(good->size(), 0);
        controller->send(QByteArray(1, byte));
        settle();
    }
    expectReply();
    EXPECT_EQ(controller->requests(), 1);
}

TEST_F(Link, BytesThatWaitInTheMachineAreDroppedToo)
{
    plug([this](const QByteArray&) { return controller->requests() == 1 ? QByteArray() : kReply; });
    link->sendMsg(kRequest, 10);
    settle();
    box.clock.advance(7000);
    ASSERT_EQ(bad->size(), 1);
    bad->clear();
    controller->send(QByteArray(10000, 'x')); // no event has run since: only the operating system has them
    link->sendMsg(kRequest, 10);
    expectReply();
}

// Whatever somebody sets the machine's clock to; every piece starts the time anew.
TEST_F(Link, TimesOutOnlyAfterMoreThanTheSetSeconds)
{
    plug(silence);
    link->sendMsg(kRequest, 10);
    settle();
    box.clock.setNow(box.clock.now().addYears(1));
    box.clock.advance(5900);
    for (int i = 0; i < 3; ++i) {
        controller->send("x");
        settle();
        box.clock.advance(5200);
        EXPECT_EQ(bad->size(), 0);
    }
    EXPECT_EQ(link->State(), 3);
    box.clock.setNow(box.clock.now().addYears(-2));
    box.clock.advance(1000);
    expectOneError("Timeout");
    EXPECT_EQ(bad->at(0).at(1).toByteArray(), QByteArray("xxx\0", 4)) << "what did come is handed on";
    EXPECT_EQ(link->State(), 1);
}

// In milliseconds it holds over the seconds; a text that is no such number does not.
TEST_F(Link, TimeOutInMilliseconds)
{
    const std::tuple<QByteArray, int, int> rows[] = {
        {"300", 299, 31}, {"50", 49, 6}, {"", 5900, 100}, {"49", 5900, 100}, {"300 ms", 5900, 100}};
    for (const auto& [text, holdsMs, endsMs] : rows) {
        SCOPED_TRACE(text.data());
        writeSettings("[Comm1]\nRecieveTimeOut(ms)=" + text + "\n");
        plug(silence);
        ASSERT_TRUE(link->save().ok());
        EXPECT_TRUE(settingsFile().contains("RecieveTimeOut(ms)=" + text));
        box.clock.advance(1000 - static_cast<int>(box.clock.elapsedMs() % 1000)); // seconds count from their stroke
        link->sendMsg(kRequest, 10);
        controller->send("x");
        settle();
        box.clock.advance(holdsMs);
        EXPECT_EQ(bad->size(), 0);
        box.clock.advance(endsMs);
        EXPECT_EQ(bad->size(), 1);
    }
}

// What its owner calls a whole reply ends the wait with its last byte; more than the expected bytes do so anyway.
TEST_F(Link, AWholeReplyThatIsShorterThanExpected)
{
    plug(silence);
    QByteArrayList seen;
    link->sendMsg(kRequest, 100, [&seen](const QByteArray& bytes) {
        seen << bytes;
        return bytes == kReply;
    });
    for (const QByteArray& piece : {kReply.left(4), kReply.mid(4)}) {
        EXPECT_EQ(good->size(), 0);
        controller->send(piece);
        settle();
    }
    expectReply();
    EXPECT_EQ(seen, (QByteArrayList{kReply.left(4), kReply}));
}

// What may come up while events run, before the request goes out.
TEST_F(Link, EventsBeforeTheRequest)
{
    const std::tuple<const char*, std::function<void()>, bool> rows[] = {
        {"opened anew", [this] { link->openComm(); }, true},
        {"given up", [this] { link->cancelSend(); }, false},
        {"another one sent", [this] { link->sendMsg("other", 10); }, false}};
    for (const auto& [name, act, goesOut] : rows) {
        SCOPED_TRACE(name);
        plug(silence);
        QTimer::singleShot(0, link.get(), act);
        EXPECT_EQ(link->sendMsg(kRequest, 10), goesOut ? QString() : kNotIdle);
        const bool waits = link->State() == 3;
        box.clock.advance(7000);
        EXPECT_EQ(bad->size(), waits ? 1 : 0) << "no wait without an end";
        EXPECT_EQ(link->State(), 1);
    }
}

// A far end that holds the line for a while (XOFF) is no lost adapter, and gets nothing that was given up meanwhile.
TEST_F(Link, ALineThatIsHeld)
{
    writeSettings("[Comm1]\nHandshaking=1\n");
    QByteArray arrived;
    plug([&](const QByteArray& bytes) {
        arrived += bytes;
        return kReply;
    });
    controller->send("\x13");
    settle();
    EXPECT_EQ(link->sendMsg("given up", 10), QString());
    settle();
    box.clock.advance(7000);
    expectOneError("Timeout");
    EXPECT_EQ(link->sendMsg(kRequest, 10), QString());
    settle();
    controller->send("\x11");
    ASSERT_TRUE(good->size() == 1 || good->wait());
    EXPECT_EQ(arrived, kRequest);
}

TEST_F(Link, WithoutALibraryItMakesItsOwn)
{
    for (const char* variable : {"VORLANT_PROGRAM_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
        qputenv(variable, QFile::encodeName(box.dir.path()));
    uclComm own(ports, box.clock);
    own.init(1);
    EXPECT_EQ(own.Speed() + u',' + own.Chara(), u"9600,N,8,1");
}

// A stranger that sends a byte now and then does not keep the program for ever.
TEST_F(Link, AServerThatDribbles)
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    plug(silence);
    link->setPortName(QString("tcp://127.0.0.1:%1").arg(server.serverPort()));
    link->prepareComm();
    EXPECT_EQ(link->sendMsg(kRequest, 100), QString());
    ASSERT_TRUE(server.hasPendingConnections() || server.waitForNewConnection(1000));
    QTcpSocket* const peer = server.nextPendingConnection();
    for (int second = 0; second < 7 && bad->isEmpty(); ++second) {
        peer->write("x");
        peer->flush();
        settle();
        box.clock.advance(1000);
    }
    expectOneError("Timeout");
    EXPECT_GT(bad->at(0).at(1).toByteArray().size(), 5) << "each byte came in time";
    EXPECT_EQ(link->State(), 1);
}

// A typed name is kept; what the command line or the environment names goes before it.
TEST_F(Link, AStoredPortName)
{
    for (const auto& [number, name] : {std::tuple("1", ""), {"2", "tcp://[::1]:4001"}}) {
        writeSettings(QByteArray("[Comm1]\nCommPortName=tcp://[::1]:4001\nCommPortNo=") + number + '\n');
        plug(silence);
        EXPECT_EQ(link->PortName(), QLatin1String(name));
        EXPECT_EQ(link->device(), *name ? QLatin1String(name) : controller->device());
        EXPECT_EQ(link->isDeferred(), *name != '\0') << "a serial server waits for a request";
    }
}

TEST_F(Link, UnpluggedWhileWaitingEndsInOneError)
{
    plug(silence);
    link->sendMsg(kRequest, 10);
    controller->unplug();
    expectOneError("comEventDCB");
    EXPECT_EQ(link->State(), 0);
    EXPECT_EQ(link->sendMsg(kRequest, 10), kNotIdle);
}

} // namespace
