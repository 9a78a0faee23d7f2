#include "ControllerScan.h"

#include "DetectionFixture.h"
#include "ScanModel.h"
#include "Table.h"

#include <functional>

namespace {

const char* const kModel = "KX62000000-10A";

// A line whose controllers a test describes by what they answer to a question: the slave that is asked and the address,
// with the settings that the link has meanwhile.
class Scan : public DetectionFixture
{
protected:
    struct Question
    {
        int slave = 0;
        bool isFirstAddress = true;
        int number = 0; // of the questions to this slave with these settings, from 1
        bool ascii = false;
    };
    using World = std::function<QByteArray(const Question&)>;

    void plug(World world)
    {
        link = std::make_unique<uclComm>(ports, box.clock);
        link->init(1, &library);
        DetectionFixture::plug(
            [this, world = std::move(world)](const QByteArray& request) { return world(questionOf(request)); });
        link->init(1, &library);
        idle.emplace(box.clock, 10);
    }

    Question questionOf(const QByteArray& request)
    {
        idle->touch();
        const bool ascii = request.startsWith(':');
        const QByteArray frame = ascii ? modbusframe::fromAscii(request) : request;
        const int slave = static_cast<quint8>(frame[0]);
        const QString settings = LineSettings{link->Speed(), link->Chara(), ascii ? 1 : 0}.text();
        if (asked.isEmpty() || asked.last() != settings)
            asked << settings;
        const int number = ++counts[settings + QString::number(slave)];
        return {slave, soundController::asksFor(frame, "0000FBC0"), number, ascii};
    }

    static QByteArray reply(const Question& question, const QByteArray& model)
    {
        const QByteArray slave(1, static_cast<char>(question.slave));
        return modbusframe::toWire(slave + QByteArray::fromHex("42000E") + model, question.ascii);
    }
    static QByteArray answer(const Question& q, const QByteArray& how)
    {
        QByteArray damaged = reply(q, kModel);
        damaged[damaged.size() / 2] = static_cast<char>(~damaged[damaged.size() / 2]);
        const QHash<QByteArray, QByteArray> answers{
            {"silent", ""},
            {"refused", modbusframe::toWire(static_cast<char>(q.slave) + QByteArray::fromHex("C202"), q.ascii)},
            {"other", reply(q, QByteArray(14, 'x'))},
            {"damaged", damaged},
            {"noise", "\x55\x01\x42"},
            {"double", reply(q, kModel) + reply(q, kModel)}};
        return answers.value(how, reply(q, how));
    }

    // "9600,N,8,1 RTU 37 KX62000000-10A" and so on, in the order in which they were told.
    QStringList scan(const ControllerScan::Plan& plan)
    {
        QStringList finds;
        asked.clear();
        counts.clear();
        ControllerScan search(*link, library);
        QObject::connect(&search, &ControllerScan::found, &search, [&](const ScanFind& find) {
            QStringList cells = scantexts::cells(find, [](const QString& text) { return text; });
            cells.removeAt(ScanModel::kResponse);
            cells.removeAt(ScanModel::kPort);
            cells.removeAll(QString());
            finds << cells.join(u' ');
        });
        QObject::connect(&search, &ControllerScan::portFailed, &search,
                         [&](int port, const QString& reason) { finds << QString::number(port) + u' ' + reason; });
        if (during)
            during(search);
        isWhole = search.run(plan);
        return finds;
    }

    static ControllerScan::Plan plan(int last = 5, const QList<LineSettings>& lines = {kUsual}, int port = 1)
    {
        return {{port}, lines, 1, last, false};
    }

    inline static const LineSettings kUsual{QStringLiteral("9600"), QStringLiteral("N,8,1"), 0};
    std::unique_ptr<uclComm> link;
    QStringList asked; // settings, as they changed
    QHash<QString, int> counts;
    std::function<void(ControllerScan&)> during;
    bool isWhole = false;
};

TEST_F(Scan, TellsAsTheTableSays)
{
    for (const QStringList& row : tableRows("comm/scans.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        plug([&](const Question& q) {
            const int column = !q.isFirstAddress ? 4 : q.number == 1 ? 2 : 3;
            return row[1].contains(QString::number(q.slave)) ? answer(q, row[column].toLatin1()) : QByteArray();
        });
        EXPECT_EQ(scan(plan()).join(u'|').remove(QStringLiteral("9600 N,8,1 ")).toStdString(), row[5].toStdString());
        EXPECT_TRUE(isWhole);
        EXPECT_EQ(link->State(), 0);
    }
}

// The second frame comes after the first was taken.
TEST_F(Scan, OneNumberTwiceOneAfterTheOther)
{
    plug([this](const Question& q) {
        if (q.slave != 2)
            return QByteArray();
        QTimer::singleShot(20, &pulse, [this, q] { controller->send(reply(q, kModel)); });
        return reply(q, kModel);
    });
    idle.emplace(box.clock, 10, 10); // the other's frame is on its way
    EXPECT_EQ(scan(plan(3)).join(u'|'), u"9600 N,8,1 RTU 2 garbled answer: two controllers with this slave address?");
}

// Its answer is on the line when the next slave is asked.
TEST_F(Scan, ASlowSlaveIsFoundAllTheSame)
{
    QByteArray late;
    plug([&](const Question& q) {
        const QByteArray now = late;
        late = q.slave == 2 && q.number == 1 ? reply(q, kModel) : QByteArray();
        return q.slave == 2 && q.number > 1 ? reply(q, kModel) : now;
    });
    EXPECT_EQ(scan(plan()).join(u'|'), u"9600 N,8,1 RTU 2 KX62000000-10A");
}

// A controller in ASCII mode with number 37 among the settings: they are asked in their order, and each find is told
// while the search goes on.
TEST_F(Scan, FindsTheSettings)
{
    plug([this](const Question& q) {
        const bool isIt = q.ascii && q.slave == 37 && link->Speed() == u"19200" && link->Chara() == u"E,7,1";
        return isIt ? reply(q, kModel) : QByteArray();
    });
    ControllerScan::Plan wanted = plan(40, scanplan::settings({"38400", "O,8,1", 1}, {}));
    wanted.firstSlave = 35;
    EXPECT_EQ(scan(wanted).join(u'|'), u"19200 E,7,1 ASCII 37 KX62000000-10A");
    EXPECT_EQ(asked.join(u'|'),
              u"38400,O,8,1 ASCII|9600,N,8,1 RTU|9600,N,8,1 ASCII|9600,E,7,1 ASCII|9600,E,8,1 RTU|9600,E,8,1 ASCII|"
              "9600,N,8,2 RTU|9600,N,8,2 ASCII|19200,N,8,1 RTU|19200,N,8,1 ASCII|19200,E,7,1 ASCII|19200,E,8,1 RTU|"
              "19200,E,8,1 ASCII|19200,N,8,2 RTU|19200,N,8,2 ASCII");
    wanted.onlyFirst = true;
    EXPECT_EQ(scan(wanted).size(), 1);
    EXPECT_TRUE(isWhole && asked.last() == u"19200,E,7,1 ASCII") << "it ends there";
}

// While a slave is asked, and between a find and what follows it.
TEST_F(Scan, StopsInTheMiddle)
{
    ControllerScan* running = nullptr;
    int at = 0;
    qint64 stoppedMs = 0;
    during = [&](ControllerScan& search) { running = &search; };
    plug([&](const Question& q) {
        stoppedMs = box.clock.elapsedMs();
        if (q.slave == at)
            QTimer::singleShot(0, &pulse, [&] { running->stop(); });
        return q.slave == 2 ? reply(q, kModel) : QByteArray();
    });
    for (at = 1; at <= 4; ++at) {
        EXPECT_EQ(scan(plan()).size(), at > 2 ? 1 : 0) << at;
        EXPECT_FALSE(isWhole);
        EXPECT_LE(box.clock.elapsedMs() - stoppedMs, 100);
        EXPECT_EQ(counts.size(), at);
    }
    at = 0;
    EXPECT_EQ(scan(plan()).size(), 1) << "the next search is a whole one";
    EXPECT_TRUE(isWhole);
}

TEST_F(Scan, APortThatCannotBeUsedIsTold)
{
    plug([this](const Question& q) {
        if (q.slave == 2)
            QTimer::singleShot(0, &pulse, [this] { controller->unplug(); });
        return QByteArray();
    });
    EXPECT_EQ(scan(plan(5, {kUsual}, 7)).join(u'|'),
              u"7 COM7 () cannot be opened: there is no such port; plug the adapter in or choose another port");
    EXPECT_EQ(scan(plan(5, {kUsual, {"19200", "N,8,1", 0}})).join(u'|').section(u':', 0, 0),
              QStringLiteral("1 COM1 (%1) was lost").arg(controller->device()))
        << "once";
}

TEST(ScanPlan, LeavesOutWhatIsImpossibleAndBeginsWithWhatIsInUse)
{
    const LineSettings inUse{QStringLiteral("19200"), QStringLiteral("N,8,1"), 1};
    const auto texts = [&](const LineSettings& used, const scanplan::Choice& choice) {
        QStringList found;
        for (const LineSettings& line : scanplan::settings(used, choice))
            found << line.text();
        return found.join(u'|').toStdString();
    };
    EXPECT_EQ(texts(inUse, {{"9600", "19200"}, {"N,8,1"}, {1}}), "19200,N,8,1 ASCII|9600,N,8,1 ASCII");
    EXPECT_EQ(texts(inUse, {{"9600"}, {"N,8,1"}, {}}), "9600,N,8,1 RTU|9600,N,8,1 ASCII") << "another speed is chosen";
    EXPECT_EQ(texts({"9600", "E,7,1", 0}, {{"9600"}, {"E,7,1"}, {}}), "9600,E,7,1 ASCII");
    EXPECT_EQ(texts(inUse, {{}, {"E,7,1"}, {0}}), "") << "RTU needs 8 bits";
}

// 10 bits a character: 10, 5 and 20 of them in RTU mode, 21, 5 and 41 in ASCII mode, and 120 ms.
TEST(ScanPlan, TheTimeOutFollowsTheSpeed)
{
    const std::tuple<LineSettings, int> rows[] = {{{"9600", "N,8,1", 0}, 157},  {{"9600", "N,8,1", 1}, 190},
                                                  {{"9600", "E,7,1", 1}, 190},  {{"9600", "N,8,2", 0}, 161},
                                                  {{"19200", "N,8,1", 0}, 139}, {{"300", "N,8,1", 0}, 1287}};
    for (const auto& [line, expected] : rows)
        EXPECT_EQ(scanplan::timeOutMs(line), expected) << qPrintable(line.text());
}

} // namespace
