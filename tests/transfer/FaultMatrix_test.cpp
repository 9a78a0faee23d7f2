#include "ModelDetection.h"
#include "ProtocolNumbers.h"
#include "SimulatorLine.h"
#include "Table.h"
#include "TransferFixture.h"

#include <QRegularExpression>
#include <QTimer>

namespace {

// A simulated controller on a pseudo-terminal with the program's link, engine and detection at the other end, in one
// process. It has one parameter of every kind that a transfer treats in a way of its own, and every section has a reply
// of another length or function.
class SimulatedTransfer : public TransferFixture
{
protected:
    void start(int mode, const char* model = "matrix")
    {
        idle.emplace(box.clock);
        loadModel(model, mode);
        atStart = values();
        line = std::make_unique<SimulatorLine>(*controller, Faults(), 0, box.clock);
        QObject::connect(line.get(), &SimulatorLine::traced, line.get(), [this] { touchClock(); });
        ASSERT_TRUE(line->openTerminal()) << qPrintable(line->errorText());
        openEngine(line->path());
    }

    // Values at the controller that are not those of the definition.
    void turnTheKnobs()
    {
        clsModbus master;
        master.setSlaveAddress(1);
        master.setTransmissionMode(state.transmissionMode());
        master.setDigitalVals({1, QByteArray::fromHex("0315000041200000")});
        master.WriteDirectMemory(0x8000, 8);
        controller->answer(master.GetSendMessage());
        master.WriteAnalogSetValue(40001, 77);
        controller->answer(master.GetSendMessage());
        master.WriteDigitalSetValue(1, true);
        controller->answer(master.GetSendMessage());
    }

    void setFault(const QString& text)
    {
        Faults faults(1);
        for (const QString& fault : text.split(u' ', Qt::SkipEmptyParts))
            ASSERT_TRUE(fault == u"none" || faults.add(fault).ok()) << qPrintable(text);
        line->setFaults(faults);
    }

    // Whether the image holds what the controller holds now.
    bool agrees(const clsKXAdr& image) const
    {
        static const QHash<QString, QString> kTables{{QStringLiteral("GetAnalogInput"), QStringLiteral("IREG ")},
                                                     {QStringLiteral("GetAnalogSet"), QStringLiteral("REG ")},
                                                     {QStringLiteral("GetDigitalSet"), QStringLiteral("COIL ")}};
        if (image.m_bModbus)
            return values().value(kTables.value(image.Cmd(1)) + image.Adr(1)).toInt() == image.getInteger(QString(), 0);
        return image.getOrgData().left(image.imageSize()).toHex().toUpper().toStdString() ==
               memory(image.StartAddress().toInt(nullptr, 16), image.imageSize());
    }

    // The images that were filled by the last read, and hold what the controller holds now or something else.
    QStringList readImages(bool agreeing)
    {
        QStringList sections;
        for (int i = 0; i < kx.ColAdr().count(); ++i) {
            const clsKXAdr& image = kx.ColAdr().at(i);
            if (image.isFilled() && agrees(image) == agreeing)
                sections << image.Section();
        }
        return sections;
    }
    QString images() // that agree
    {
        const auto count = readImages(true).size();
        return count == 0                    ? QStringLiteral("none")
               : count < kx.ColAdr().count() ? QStringLiteral("partly")
                                             : QStringLiteral("all");
    }
    void expectNoWrongImages() { EXPECT_EQ(readImages(false).join(u' ').toStdString(), ""); }

    std::unique_ptr<SimulatorLine> line;
    QHash<QString, QString> atStart;
};

// The rows of the table: transfer (detect, read, one parameter, block or all to write), mode, fault; then how it ends.
// One for both modes is two.
QList<QStringList> cells()
{
    QList<QStringList> found;
    for (QStringList row : tableRows("transfer/fault_matrix.tsv")) {
        const QString modes = row[1] == u"both" ? QStringLiteral("rtu ascii") : row[1];
        for (const QString& mode : modes.split(u' ')) {
            row[1] = mode;
            found << row;
        }
    }
    return found;
}

class FaultMatrix : public SimulatedTransfer, public ::testing::WithParamInterface<QStringList>
{
protected:
    // The values that the user enters, and where they go at the controller.
    struct Entry
    {
        const char* tag;
        const char* data;
        const char* transfers; // in which it goes out
        QHash<QString, QString> stored;
    };
    inline static const std::vector<Entry> kEntries{
        {"VQSV1", "123", "one block all chosen", {{"MEM 8000", "00"}, {"MEM 8001", "7B"}}},
        {"VQF1",
         "2.5",
         "block all chosen",
         {{"MEM 8004", "40"}, {"MEM 8005", "20"}, {"MEM 8006", "00"}, {"MEM 8007", "00"}}},
        {"SWB1", "0", "block all chosen", {{"MEM 8100", "00"}}},
        {"PQREG", "88", "all chosen", {{"REG 40001", "88"}}},
        {"PQRUN", "0", "all chosen", {{"COIL 1", "0"}}}};
    static bool goesOut(const Entry& entry, const QString& transfer)
    {
        return QLatin1String(entry.transfers).contains(transfer);
    }

    static bool isWrite(const QString& transfer) { return transfer != u"detect" && transfer != u"read"; }

    void run(const QString& transfer)
    {
        window.messages.clear();
        if (transfer == u"detect")
            detect();
        else if (transfer == u"read")
            engine->getDataFromKX(nullptr);
        else if (transfer == u"one")
            engine->setDataToKXOne(QStringLiteral("VQSV1"));
        else if (transfer == u"block")
            engine->writeBlock(*kx.getBlockByNo(1), true);
        else if (transfer == u"chosen")
            writeChosen();
        else
            engine->setDataToKXAll();
    }

    // What is called accepted is there, in every mode and whatever the line does.
    void writeChosen()
    {
        QStringList tags;
        for (const Entry& entry : kEntries)
            tags << QString::fromLatin1(entry.tag);
        engine->writeChosen(tags);
        for (const SentParameter& parameter : engine->lastWrite().parameters) {
            const auto entry = std::find_if(kEntries.begin(), kEntries.end(), [&](const Entry& each) {
                return parameter.tag == QLatin1String(each.tag);
            });
            for (auto it = entry->stored.begin();
                 parameter.outcome == SendOutcome::Accepted && it != entry->stored.end(); ++it)
                EXPECT_EQ(values().value(it.key()), it.value()) << entry->tag;
        }
    }

    void detect()
    {
        ModelDetection detection(*link, library, QString());
        detection.Logs(noLog(), trace);
        const auto ended = detection.detect(1, state.transmissionMode(), {kModelString}).result;
        state.setState(ended == DetectionResult::Found ? MainState::Confirmed : MainState::NoConnection);
        window.messages << detection.failure();
        window.messages.removeAll(QString());
    }

    // A write begins with the controller's values in the grid and some of them changed by the user.
    void prepare(const QString& transfer)
    {
        if (!isWrite(transfer))
            return;
        engine->getDataFromKX(nullptr);
        ASSERT_EQ(images(), u"all");
        for (const Entry& entry : kEntries) {
            if (goesOut(entry, transfer))
                kx.setData(QString::fromLatin1(entry.tag), QString::fromLatin1(entry.data), false);
        }
    }

    // What became of the controller's memory.
    QString change(const QHash<QString, QString>& before, const QString& transfer) const
    {
        const QHash<QString, QString> now = values();
        QHash<QString, QString> intended = before;
        for (const Entry& entry : kEntries) {
            if (goesOut(entry, transfer))
                intended.insert(entry.stored);
        }
        if (now == before)
            return QStringLiteral("kept");
        if (now == atStart)
            return QStringLiteral("restarted");
        return now == intended ? QStringLiteral("written") : QStringLiteral("damaged");
    }

    QList<int> lines() { return {traceLines(")S:"), traceLines("(Scces)R:"), traceLines("(Error)R:")}; }
};

TEST_P(FaultMatrix, EndsAsTheTableSays)
{
    const QString transfer = GetParam()[0];
    start(GetParam()[1] == u"ascii" ? 1 : 0);
    turnTheKnobs();
    ASSERT_NE(values(), atStart);
    prepare(transfer);
    const QHash<QString, QString> before = values();
    const QList<int> earlier = lines();
    setFault(GetParam()[2]);
    run(transfer);
    QStringList counts;
    for (int i = 0; i < earlier.size(); ++i)
        counts << QString::number(lines()[i] - earlier[i]);
    const QStringList outcome{
        window.messages.isEmpty() ? QStringLiteral("-")
                                  : window.messages.join(u'|').replace(u'\n', QStringLiteral(" / ")),
        QString::number(static_cast<int>(state.state())), counts.join(u'/'), images(), change(before, transfer)};
    EXPECT_EQ(outcome.join(u'\t').toStdString(), GetParam().mid(3).join(u'\t').toStdString());
    if (!isWrite(transfer) ||
        (transfer != u"one" && transfer != u"chosen" && engine->lastRead().outcome == ReadOutcome::Complete)) {
        expectNoWrongImages();
    } else {
        // Nobody could look: what is not known to be there stays in the grid, to be sent again.
        for (const QString& tag : engine->lastWrite().unsent)
            EXPECT_EQ(kx.getDataByTag(tag)->Edit, EditState::kChanged) << qPrintable(tag);
    }
    EXPECT_FALSE(window.progressShown);
    EXPECT_FALSE(engine->isBusy());

    // Late replies may still be on their way.
    setFault(QString());
    prepare(transfer);
    run(transfer);
    EXPECT_EQ(window.messages.join(u'|').toStdString(), "");
    EXPECT_EQ(static_cast<int>(state.state()), transfer == u"detect" ? 1 : 2);
    EXPECT_EQ(images().toStdString(), transfer == u"detect" ? "none" : "all");
    EXPECT_TRUE(engine->lastWrite().failed.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Cells, FaultMatrix, ::testing::ValuesIn(cells()), [](const auto& row) {
    const QString name = row.param.mid(0, 3).join(u'_');
    return QString(name).replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")), QStringLiteral("_")).toStdString();
});

// Registers whose replies differ in nothing but their values.
using LikeReplies = SimulatedTransfer;

// The time-out is 5 s.
TEST_F(LikeReplies, LateOnesAreNotTakenForThoseOfAnotherRegister)
{
    for (const char* fault : {"delay:6500", "delay:7900", "delay:9900", "delay:12500", "delay:17300",
                              "delay:6500@every2", "delay:8500@every3"}) {
        for (const int mode : {0, 1}) {
            SCOPED_TRACE(std::string(fault) + (mode == 0 ? " RTU" : " ASCII"));
            start(mode, "registers");
            setFault(QLatin1String(fault));
            for (int round = 0; round < 3; ++round) {
                engine->getDataFromKX(nullptr);
                expectNoWrongImages();
                box.clock.setNow(box.clock.now().addSecs(round == 0 ? 3600 : -7200)); // somebody sets the clock
            }
            setFault(QString());
            engine->getDataFromKX(nullptr);
            EXPECT_EQ(images().toStdString(), "all");
            EXPECT_EQ(engine->lastRead().failures, 0);
            EXPECT_EQ(grid.cell(2, 1).text.toStdString(), "200");
        }
    }
}

// Waiting is for replies that may still come: an answer that is damaged, or a refusal, costs no time.
TEST_F(LikeReplies, DamagedAnswersAndRefusalsCostNoTime)
{
    for (const char* fault : {"corrupt@every2", "exception:2@every2", "exception:2"}) {
        for (const int mode : {0, 1}) {
            SCOPED_TRACE(std::string(fault) + (mode == 0 ? " RTU" : " ASCII"));
            start(mode, "registers");
            const qint64 before = box.clock.elapsedMs();
            setFault(QLatin1String(fault));
            engine->getDataFromKX(nullptr);
            EXPECT_GT(engine->lastRead().failures, 0);
            EXPECT_EQ(images(), QLatin1String(fault).contains(u'@') ? u"all" : u"none");
            EXPECT_LT(box.clock.elapsedMs() - before, 2000);
            EXPECT_TRUE(window.progressText.startsWith(u"It is forwarding it.")) << "an answer all the same";
        }
    }
}

// A refusal names no address: a late one is not taken for that of another register.
TEST_F(LikeReplies, ALateRefusalDoesNotEndAnotherRequest)
{
    start(0, "registers");
    RequestChannel channel(*link, library, noLog());
    channel.begin(1, 0);
    const auto ask = [&](int count, const char* fault) {
        setFault(QLatin1String(fault));
        channel.modbus().ReadAnalogInputData(30001, count);
        return channel.exchange(functioncode::kReadInputRegisters);
    };
    EXPECT_EQ(ask(1, "exception:2 delay:6200"), RequestChannel::Result::Failed);
    EXPECT_EQ(ask(2, "delay:1000"), RequestChannel::Result::Failed) << "both answers came: damaged, not refused";
    EXPECT_FALSE(channel.reason().contains(u"refused")) << qPrintable(channel.reason());
    EXPECT_EQ(ask(2, ""), RequestChannel::Result::Success);
}

// Cancel while nothing comes ends the wait long before the time-out; a reply that has begun to come is taken.
TEST_F(LikeReplies, CancelEndsASilentWait)
{
    for (const char* fault : {"silent", "delay:100"}) {
        SCOPED_TRACE(fault);
        start(0, "registers");
        setFault(QLatin1String(fault));
        const qint64 before = box.clock.elapsedMs();
        idle.emplace(box.clock, 10);
        QTimer::singleShot(0, engine.get(), [this] { engine->ProgCancel(0); });
        engine->getDataFromKX(nullptr);
        const bool isSilent = fault == std::string("silent");
        EXPECT_LE(box.clock.elapsedMs() - before, isSilent ? 200 : 100000);
        EXPECT_EQ(engine->lastRead().outcome, isSilent ? ReadOutcome::Cancelled : ReadOutcome::Complete);
    }
}

// Cancel while late replies pass: the request that waits for them does not go out.
TEST_F(LikeReplies, CancelEndsTheWaitForLateReplies)
{
    start(0, "registers");
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
