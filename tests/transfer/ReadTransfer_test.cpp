#include "ScriptedTransfer.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

class Read : public ScriptedTransfer
{
protected:
    void read() { engine->getDataFromKX(nullptr); }
    QString cell(const char* tag) { return grid.cell(item(tag).Row(), item(tag).Col()).text; }
};

TEST_F(Read, FillsTheGrid)
{
    read();
    EXPECT_EQ(cell("MQCODE"), kModelString);
    EXPECT_EQ(cell("A"), u"100");
    EXPECT_EQ(cell("PV"), u"42");
    EXPECT_EQ(state.state(), MainState::UpToDate);
    EXPECT_EQ(engine->lastRead().answeredModel, kModelString);
    EXPECT_EQ(log.size(), 6) << "unknown commands and empty addresses send nothing";
    EXPECT_EQ(engine->lastRead().requests, 6);
    EXPECT_EQ(window.maximumShown, 6);
    EXPECT_EQ(window.positions, (QList<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(traceLines("(Dirct)S:"), 5);
    EXPECT_EQ(traceLines("(AlIpt)S:"), 1);
}

// The requests that fail are repeated, with the attempt shown; the section that stays unread is reported by its block.
TEST_F(Read, RepeatsAndGoesOnWithoutASection)
{
    script = [](const QByteArray& request) {
        const bool isMain = request.mid(5, 3) == QByteArray::fromHex("800008");
        return isMain ? Reply(QByteArray(14, 'x')) : Reply();
    };
    QStringList attempts;
    QObject::connect(engine.get(), &TransferEngine::attemptFailed, engine.get(),
                     [&](const QString& entry, int attempt, int maximum, const QString&) {
                         attempts << QStringLiteral("%1 %2/%3").arg(entry).arg(attempt).arg(maximum);
                     });
    read();
    EXPECT_EQ(attempts.size(), 6);
    EXPECT_EQ(attempts.value(5), u"Main: Direct 8000 6/6");
    EXPECT_TRUE(window.progressText.endsWith(u"(5/6)")) << qPrintable(window.progressText);
    EXPECT_EQ(engine->lastRead().failures, 6);
    EXPECT_EQ(engine->lastRead().givenUp, QStringList{QStringLiteral("Main: Direct 8000")});
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Complete);
    EXPECT_EQ(window.messages.size(), 1);
    EXPECT_TRUE(window.messages.value(0).startsWith(u"These blocks were not read: "));
    EXPECT_EQ(cell("PV"), u"42");
    EXPECT_EQ(cell("A"), QString());
}

TEST_F(Read, UnpluggedInTheMiddleStops)
{
    script = [this](const QByteArray& request) {
        if (request.mid(5, 2) != QByteArray::fromHex("8000"))
            return Reply();
        QTimer::singleShot(0, engine.get(), [this] { line.unplug(); });
        return Reply(QByteArray());
    };
    runClockWhileWaiting();
    read();
    EXPECT_EQ(state.state(), MainState::Confirmed);
    EXPECT_EQ(window.messages, QStringList{QStringLiteral("Reception error occurred.[-1]")});
    EXPECT_FALSE(engine->isBusy());
}

TEST_F(Read, AReplyThatAnnouncesAnotherNumberOfBytesIsRepeated)
{
    script = [this](const QByteArray&) {
        return log.size() == 6 ? Reply(modbusframe::toWire(QByteArray::fromHex("0104000064"), false)) : Reply();
    };
    read();
    EXPECT_EQ(log.size(), 7);
    EXPECT_EQ(cell("PV"), u"42");
}

// From the second sending on, for as long as not a byte has come.
TEST_F(Read, ASilentLineIsToldEarly)
{
    const std::string silent =
        "No answer from slave 1 at 9600,N,8,1. Check slave address, speed, data format and cable.";
    const std::tuple<const char*, int, QByteArray, bool> rows[] = {{"first sending", 1, "", false},
                                                                   {"second", 2, "", true},
                                                                   {"later", 5, "", true},
                                                                   {"a byte came", 3, "x", false}};
    for (const auto& [name, sendings, reply, isTold] : rows) {
        SCOPED_TRACE(name);
        log.clear();
        QString shown;
        script = [&](const QByteArray&) {
            if (log.size() == sendings + 1) {
                shown = window.progressText;
                engine->ProgCancel(0);
            }
            return Reply(reply);
        };
        runClockWhileWaiting();
        read();
        EXPECT_EQ(shown.startsWith(QString::fromStdString(silent)), isTold) << qPrintable(shown);
    }
}

TEST_F(Read, CancelIsHonouredAfterAFailure)
{
    script = [this](const QByteArray&) {
        engine->ProgCancel(0);
        return Reply(QByteArray());
    };
    runClockWhileWaiting();
    read();
    EXPECT_EQ(log.size(), 1);
    EXPECT_EQ(window.messages, QStringList{QStringLiteral("It was cancelled.")});
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Cancelled);
}

TEST_F(Read, OffLineTracesAndSendsNothing)
{
    settings.m_bComm = true;
    read();
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(traceLines("(Dirct)S:"), 5);
    EXPECT_EQ(state.state(), MainState::UpToDate);
    EXPECT_EQ(cell("A"), u"100") << "the definition's default";
    EXPECT_EQ(cell("MQCODE"), kModelString);
}

// What the user declines sends nothing, and neither does what an abort meets before its first request.
TEST_F(Read, NothingIsSent)
{
    settings.m_bViewRecvConf = true;
    window.answer = MessageResult::kNo;
    read();
    EXPECT_EQ(window.messages, QStringList{QStringLiteral("It reads out from the KX?")});
    EXPECT_EQ(state.state(), MainState::NoConnection);
    window.answer = MessageResult::kYes;
    QTimer::singleShot(0, engine.get(), [this] { engine->abort(); });
    read();
    QCoreApplication::processEvents();
    EXPECT_EQ(engine->lastRead().outcome, ReadOutcome::Aborted);
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(traceLines("S:"), 0);
}

// A bad cable shows in the counts before anything fails.
TEST_F(ScriptedTransfer, CountsHowRequestsEnd)
{
    runClockWhileWaiting();
    const QStringList kinds{{}, QStringLiteral("silent"), QStringLiteral("short"), QStringLiteral("refused")};
    script = [&](const QByteArray& request) -> Reply {
        const QString kind = kinds.value(static_cast<int>(log.size()) - 1);
        if (kind == u"silent")
            return QByteArray();
        if (kind == u"short")
            return controller->answer(request).chopped(1);
        return kind == u"refused" ? Reply(controller->answer(request, 4)) : std::nullopt;
    };
    engine->getDataFromKX(nullptr);
    const LineStatistics counts = engine->statistics();
    using Kind = LineStatistics::Reply;
    EXPECT_TRUE(counts.count(Kind::Missing) == 1 && counts.count(Kind::Damaged) == 1 &&
                counts.count(Kind::Refused) == 1 && counts.count(Kind::Good) == engine->lastRead().requests - 3);
    EXPECT_EQ(counts.errorsPerThousand(), 2000.0 / counts.requests());
    LineStatistics some;
    for (const int milliseconds : {30, 10, 20, 90})
        some.note(Kind::Good, milliseconds, 7);
    EXPECT_TRUE(some.responseMs(0) == 10 && some.responseMs(0.5) == 20 && some.responseMs(1) == 90);
    EXPECT_EQ(some.bytes(), 28);
}

} // namespace
