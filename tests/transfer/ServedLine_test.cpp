#include "ControllerScan.h"
#include "SerialServer.h"
#include "SimulatorLine.h"
#include "TransferFixture.h"

#include <QTimer>

namespace {

// The simulated controller behind a serial server.
class ServedLine : public TransferFixture
{
protected:
    void serve(int mode = 0)
    {
        loadModel("write", mode);
        line = std::make_unique<SimulatorLine>(*controller, Faults(), 0, box.clock);
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
    }

    void expectValues()
    {
        EXPECT_EQ(link->errorText().toStdString(), "");
        EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Complete);
        EXPECT_EQ(engine->lastRead().failures, 0);
        const std::tuple<const char*, QString> rows[] = {{"MQCODE", kModelString}, {"A", "100"}, {"PV", "42"}};
        for (const auto& [tag, text] : rows) {
            const clsData& item = *kx.getDataByTag(tag);
            EXPECT_EQ(grid.cell(item.Row(), item.Col()).text, text) << tag;
        }
    }

    std::unique_ptr<SimulatorLine> line;
};

TEST_F(ServedLine, ReadsThroughTheManualsServer)
{
    EXPECT_EQ(SerialServer::example("Vorlant"), SerialServer::example("VorlantJ"));
    for (const auto& [mode, isTelnet] : {std::tuple(0, false), {0, true}, {1, false}, {1, true}}) {
        serve(mode);
        const SerialServer server(line->path());
        const QString name = isTelnet ? server.telnet() : server.tcp();
        SCOPED_TRACE(qPrintable(name));
        openEngine(name);
        EXPECT_TRUE(link->isDeferred() && link->device() == name) << "it waits for the first request";
        for (int i = 0; i < 3; ++i) {
            engine->getDataFromKX(nullptr);
            expectValues();
            link->prepareComm(); // as when the settings were open: closed, and at once connected to again
        }
    }
}

// Also where the server has ended: that is no silent line.
TEST_F(ServedLine, IsSearched)
{
    serve(1);
    auto server = std::make_unique<SerialServer>(line->path());
    openEngine(server->tcp());
    idle.emplace(box.clock, 50, 2);
    ControllerScan search(*link, library);
    QStringList said;
    QObject::connect(&search, &ControllerScan::found, &search, [&](const ScanFind& find) { said << find.model; });
    QObject::connect(&search, &ControllerScan::portFailed, &search, [&](int, const QString& why) { said << why; });
    const ControllerScan::Plan plan{{1}, {{QStringLiteral("9600"), QStringLiteral("N,8,1"), 1}}, 1, 2, false};
    EXPECT_TRUE(search.run(plan));
    EXPECT_EQ(said, QStringList{kModelString});
    server.reset();
    said.clear();
    EXPECT_TRUE(search.run(plan));
    EXPECT_TRUE(said.join(u'|').contains(u"the serial server refuses the connection")) << qPrintable(said.join(u'|'));
}

TEST_F(ServedLine, ReadsThroughPlainForwarding)
{
    serve();
    QProcess forwarder;
    const quint16 port = SerialServer::freePort();
    forwarder.start("socat", {QString("TCP-LISTEN:%1,bind=127.0.0.1").arg(port), "FILE:" + line->path() + ",rawer"});
    ASSERT_TRUE(forwarder.waitForStarted() && SerialServer::isListening(port));
    openEngine(QString("tcp://127.0.0.1:%1").arg(port));
    engine->getDataFromKX(nullptr);
    expectValues();
    forwarder.kill();
    forwarder.waitForFinished();
}

TEST_F(ServedLine, AServerThatEndsInTheMiddleIsALostLine)
{
    for (const bool isTelnet : {false, true}) {
        window.messages.clear();
        serve();
        SerialServer server(line->path());
        QObject::connect(line.get(), &SimulatorLine::traced, line.get(), [&] {
            server.kill();
            runClockWhileWaiting();
        });
        openEngine(isTelnet ? server.telnet() : server.tcp());
        engine->getDataFromKX(nullptr);
        idle.reset();
        EXPECT_EQ(window.messages, QStringList{"Reception error occurred.[-1]"});
        EXPECT_EQ(link->State(), 0);
        EXPECT_TRUE(link->errorText().contains(link->device() + ") was lost: the serial server closed the connection"))
            << qPrintable(link->errorText());
    }
}

// Cancel and the end of the program do not wait for a server.
TEST_F(ServedLine, ConnectingCanBeGivenUp)
{
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    loadModel("write");
    const std::tuple<const char*, std::function<void()>> rows[] = {{"cancel", [this] { engine->ProgCancel(0); }},
                                                                   {"close", [this] { engine->abort(); }}};
    for (const auto& [name, giveUp] : rows) {
        SCOPED_TRACE(name);
        openEngine(QString("rfc2217://127.0.0.1:%1").arg(silent.serverPort()));
        QTimer::singleShot(0, engine.get(), giveUp);
        engine->getDataFromKX(nullptr);
        EXPECT_NE(engine->lastRead().outcome, ReadOutcome::Complete);
        EXPECT_FALSE(engine->isBusy());
        EXPECT_EQ(link->State(), 0);
        EXPECT_TRUE(link->errorText().endsWith("It was cancelled.")) << qPrintable(link->errorText());
    }
}

} // namespace
