#include "ComSetSession.h"
#include "FaultMatrixFixture.h"
#include "RecordingOwner.h"

#include <QFile>
#include <QTimer>

#include <cctype>
#include <string>
#include <vector>

namespace {

struct Cell
{
    QString transfer; // detect, read, one (parameter), block or all (write)
    int mode = 0;
    QString fault;
    QString outcome; // the other columns, as the test puts them together
};

void PrintTo(const Cell& cell, std::ostream* out)
{
    *out << qPrintable(cell.transfer) << ' ' << (cell.mode == 0 ? "RTU" : "ASCII") << ' ' << qPrintable(cell.fault);
}

// The cells of the table; a row for both modes is two cells.
std::vector<Cell> readTable()
{
    std::vector<Cell> cells;
    QFile file(QStringLiteral(VORLANT_TEST_DATA "/transfer/fault_matrix.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        return cells;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& text : lines) {
        const QStringList fields = text.split(u'\t', Qt::SkipEmptyParts);
        if (text.startsWith(u'#') || fields.size() != 8)
            continue;
        for (const auto& [mode, name] : {std::pair(0, u"rtu"), std::pair(1, u"ascii")}) {
            if (fields[1] == QStringView(name) || fields[1] == u"both")
                cells.push_back({fields[0], mode, fields[2], fields.mid(3).join(u'\t')});
        }
    }
    return cells;
}

class FaultMatrix : public FaultMatrixFixture, public ::testing::WithParamInterface<Cell>
{
protected:
    // A value that the user enters, and where it goes at the controller.
    struct Entry
    {
        const char* tag;
        const char* data;
        int block;
        QHash<QString, QString> stored;
    };

    static const std::vector<Entry>& entries()
    {
        static const std::vector<Entry> kEntries{
            {"VQSV1", "123", 1, {{"MEM 8000", "00"}, {"MEM 8001", "7B"}}},
            {"VQF1", "2.5", 1, {{"MEM 8004", "40"}, {"MEM 8005", "20"}, {"MEM 8006", "00"}, {"MEM 8007", "00"}}},
            {"SWB1", "0", 1, {{"MEM 8100", "00"}}},
            {"PQREG", "88", 2, {{"REG 40001", "88"}}},
            {"PQRUN", "0", 2, {{"COIL 1", "0"}}}};
        return kEntries;
    }

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
        else
            engine->setDataToKXAll();
    }

    void detect()
    {
        RecordingOwner owner(*link);
        owner.slave = state.slaveAddress();
        owner.mode = state.transmissionMode();
        ComSetSession session({owner, ports, library, QString()});
        session.Logs(noLog(), trace);
        ComSetFields fields = session.open();
        const bool isConfirmed = session.confirm(fields);
        state.setState(isConfirmed ? MainState::Confirmed : MainState::NoConnection);
        EXPECT_EQ(owner.states, QList<int>{isConfirmed ? 1 : 0});
    }

    static bool isWrite(const QString& transfer) { return transfer != u"detect" && transfer != u"read"; }

    // A write begins with the controller's values in the grid and some of them changed by the user.
    void prepare(const QString& transfer)
    {
        if (!isWrite(transfer))
            return;
        engine->getDataFromKX(nullptr);
        ASSERT_EQ(images(), u"all");
        for (const Entry& entry : entries()) {
            if (goesOut(entry, transfer))
                kx.setData(QString::fromLatin1(entry.tag), QString::fromLatin1(entry.data), false);
        }
    }

    static bool goesOut(const Entry& entry, const QString& transfer)
    {
        return transfer == u"all" || (transfer == u"block" && entry.block == 1) ||
               (transfer == u"one" && entry.tag == QByteArray("VQSV1"));
    }

    // What became of the controller's memory.
    QString change(const QHash<QString, QString>& before, const QString& transfer) const
    {
        const QHash<QString, QString> now = values();
        QHash<QString, QString> intended = before;
        for (const Entry& entry : entries()) {
            if (goesOut(entry, transfer))
                intended.insert(entry.stored);
        }
        if (now == before)
            return QStringLiteral("kept");
        if (now == atStart)
            return QStringLiteral("restarted");
        return now == intended ? QStringLiteral("written") : QStringLiteral("damaged");
    }

    struct Lines
    {
        int sent;
        int good;
        int bad;
    };
    Lines lines() { return {traceLines(")S:"), traceLines("(Scces)R:"), traceLines("(Error)R:")}; }
    QString linesSince(const Lines& before)
    {
        const Lines now = lines();
        return QStringLiteral("%1/%2/%3")
            .arg(now.sent - before.sent)
            .arg(now.good - before.good)
            .arg(now.bad - before.bad);
    }
};

TEST_P(FaultMatrix, EndsAsTheTableSays)
{
    const Cell& cell = GetParam();
    start(cell.mode);
    turnTheKnobs();
    ASSERT_NE(values(), atStart);
    prepare(cell.transfer);
    const QHash<QString, QString> before = values();
    const Lines traced = lines();
    setFault(cell.fault == u"none" ? QString() : cell.fault);
    run(cell.transfer);
    const QStringList outcome{window.messages.isEmpty() ? QStringLiteral("-") : window.messages.join(u'|'),
                              QString::number(static_cast<int>(state.state())), linesSince(traced), images(),
                              change(before, cell.transfer)};
    EXPECT_EQ(outcome.join(u'\t').toStdString(), cell.outcome.toStdString());
    const bool isReadBack = engine->lastRead().outcome == ReadOutcome::Complete;
    if (isWrite(cell.transfer) && (cell.transfer == u"one" || !isReadBack)) {
        // Nobody could look: what is not known to be there stays in the grid, to be sent again.
        for (const QString& tag : engine->lastWrite().unsent)
            EXPECT_EQ(kx.getDataByTag(tag)->Edit, EditState::kChanged) << qPrintable(tag);
    } else {
        EXPECT_EQ(wrongImages().join(u' ').toStdString(), "");
    }
    EXPECT_FALSE(window.progressShown);
    EXPECT_FALSE(engine->isBusy());

    // Late replies may still be on their way.
    setFault(QString());
    prepare(cell.transfer);
    run(cell.transfer);
    EXPECT_EQ(window.messages.join(u'|').toStdString(), "");
    EXPECT_EQ(static_cast<int>(state.state()), cell.transfer == u"detect" ? 1 : 2);
    EXPECT_EQ(images().toStdString(), cell.transfer == u"detect" ? "none" : "all");
    EXPECT_TRUE(engine->lastWrite().failed.isEmpty());
}

std::string nameOf(const ::testing::TestParamInfo<Cell>& cell)
{
    std::string name = ::testing::PrintToString(cell.param);
    for (char& c : name)
        c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cells, FaultMatrix, ::testing::ValuesIn(readTable()), nameOf);

// Registers whose replies differ in nothing but their values.
using LikeReplies = FaultMatrixFixture;

class LateReplies : public LikeReplies, public ::testing::WithParamInterface<const char*>
{};

TEST_P(LateReplies, AreNotTakenForThoseOfAnotherRegister)
{
    for (const int mode : {0, 1}) {
        start(mode, "registers");
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
    start(0, "registers");
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
