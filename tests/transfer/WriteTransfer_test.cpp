#include "BackupStore.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "TransferFixture.h"

#include <QSignalSpy>
#include <QTimer>

#include <map>

namespace {

using soundController::kModel;
using soundController::rtu;

// A controller with eight bytes of memory at 8000 and eight at 8100, registers and coils.
class Controller
{
public:
    QByteArray answer(const QByteArray& request)
    {
        const auto function = static_cast<quint8>(request.at(1));
        log << request.mid(1, request.size() - 3).toHex();
        if (deaf == function)
            return {};
        if (function == 6 || function == 5) {
            registers[clsModbus::ByteToInt(request, 2)] = clsModbus::ByteToInt(request, 4);
            return request;
        }
        const int address = static_cast<quint16>(clsModbus::ByteToInt(request, 5));
        const int count = static_cast<quint8>(request.at(7));
        if (request.at(2) != 0) {
            if (!ignoresWrites)
                part(address).replace(address % 0x100, count, request.mid(8, count));
            return rtu(request.left(8));
        }
        const QByteArray data = address == 0xFBC0 ? model : part(address).mid(address % 0x100, count);
        return rtu(request.left(2) + '\0' + static_cast<char>(count) + data);
    }

    QByteArray model = kModel;
    QByteArray& part(int address) { return address < 0x8100 ? low : high; }
    QByteArray low = QByteArray::fromHex("0064000501020304");
    QByteArray high = QByteArray::fromHex("00C8000000000000");
    std::map<int, int> registers;
    QByteArrayList log;
    int deaf = 0;
    bool ignoresWrites = false;
};

class Write : public TransferFixture
{
protected:
    Write()
        : line([this](const QByteArray& request) {
              touchClock();
              return controller.answer(request);
          })
    {
        ports.assign(1, line.device());
        link.init(1, &library);
        const QByteArray main = "CommRaedSection=Main\nCommWriteSection=Main\nBlockNo=1\n"
                                "DataInfo=0,-99999,99999,<=,<=,0,10\n";
        load("[Setting]\nBlockMaxCount=4\nDataMaxCount=9\nMaxRow=20\nMaxCol=1\n"
             "[BlockInfo1]\nRelayBlockNo=2,9\n[BlockInfo2]\nName=B\n[BlockInfo3]\nName=C\n[BlockInfo4]\nName=D\n" +
                 dataSection(1, "Tag=MQCODE\nCellType=String\nDataLen=14\nKXAddress=FBC0\nCommRaedSection=Id\n"
                                "CommWriteSection=Id\nBlockNo=3") +
                 dataSection(2, ("Tag=A\nDataLen=2\nKXAddress=8000\n" + main).constData()) +
                 dataSection(3, ("Tag=B\nDataLen=1\nKXAddress=8003\n" + main).constData()) +
                 dataSection(4, ("Tag=BIT\nCellType=Bit\nBitMask=4\nDataLen=1\nKXAddress=8004\n" + main).constData()) +
                 dataSection(5, "Tag=C\nDataLen=2\nKXAddress=8100\nCommRaedSection=Other\nCommWriteSection=Other\n"
                                "BlockNo=2") +
                 dataSection(6, "Tag=D\nDataLen=2\nKXAddress=8102\nCommRaedSection=Other\nCommWriteSection=Other\n"
                                "BlockNo=3") +
                 dataSection(7, ("Tag=F\nDataLen=2\nKXAddress=8006\n" + main).constData()) +
                 dataSection(8,
                             "Tag=CMD\nCellType=Bit\nDataLen=1\nCommRaedSection=Cmd\nCommWriteSection=Cmd\nBlockNo=4") +
                 dataSection(9,
                             "Tag=G\nDataLen=2\nKXAddress=8100\nCommRaedSection=Bad\nCommWriteSection=Bad\nBlockNo=4"),
             "[Id]\nReadCmd1=Direct,FBC0,14\nWriteCmdMax=0\n"
             "[Main]\nReadCmd1=Direct,8000,8\nWriteCmdMax=4\nWriteCmd1=Direct,8000,8\nWriteCmd2=SetAnalog,40001,A\n"
             "WriteCmd3=SetAnalog,40010,&h0001\nWriteCmd4=SetDigital,1,&h0001\n"
             "[Other]\nReadCmd1=Direct,8100,8\nWriteCmdMax=2\nWriteCmd1=Direct,8100,8\nWriteCmd2=SetAnalog,40002,A\n"
             "[Cmd]\nReadCmdMax=0\nWriteCmd1=SetDigital,20,&h0001\n"
             "[Bad]\nReadCmdMax=2\nReadCmd1=Direct,8100,8\nReadCmd2=Direct,8100,2\nWriteCmd1=Direct,8100,8\n");
        engine =
            std::make_unique<TransferEngine>(TransferEngine::Parts{kx, link, settings, trace, window, window, state});
        engine->getDataFromKX(nullptr);
        controller.log.clear();
        window.positions.clear();
    }

    clsData& item(const char* tag) { return *kx.getDataByTag(QLatin1String(tag)); }
    void edit(const char* tag, const char* value)
    {
        item(tag).setData(QLatin1String(value));
        kx.refreshCell(item(tag));
    }
    QByteArrayList requests(const char* start) const
    {
        QByteArrayList found;
        for (const QByteArray& request : controller.log) {
            if (request.startsWith(start))
                found << request;
        }
        return found;
    }
    Controller controller;
    ScriptedController line;
    uclComm link{ports, box.clock};
    RecordingWindow window;
    std::unique_ptr<TransferEngine> engine;
};

// One question and one report; when the block fails the parameter behind it does not go out, and all stay marked.
TEST_F(Write, BlockAndParameterAreOneAction)
{
    runClockWhileWaiting();
    settings.m_bViewSendConf = true;
    for (const int deaf : {66, 0}) {
        controller.deaf = deaf;
        controller.log.clear();
        window.messages.clear();
        edit("A", "300");
        edit("C", "9");
        engine->writeBlockThenOne(kx.getBlockByNo(2), QStringLiteral("A"));
        EXPECT_EQ(window.messages, QStringList{QStringLiteral("Write to the KX?")});
        EXPECT_EQ(engine->lastWrite().requests, deaf != 0 ? 2 : 6);
        EXPECT_EQ(engine->lastWrite().failed.join(u','), deaf != 0 ? u"Other: Direct 8100: Timeout" : u"");
        for (const char* tag : {"A", "C"})
            EXPECT_EQ(item(tag).Edit == EditState::kChanged, deaf != 0) << tag;
    }
    EXPECT_EQ(controller.low.left(2).toHex() + controller.high.left(2).toHex(), "012c0009");
}

TEST_F(Write, OneParameterGoesWithItsImage)
{
    runClockWhileWaiting();
    edit("A", "300");
    EXPECT_EQ(engine->setDataToKXOne(QStringLiteral("A")), 1);
    EXPECT_EQ(controller.low.toHex(), "012c000501020304") << "only the parameter's bytes changed";
    EXPECT_EQ(requests("06"), (QByteArrayList{"06000001"
                                              "2c",
                                              "060009"
                                              "0001"}));
    EXPECT_EQ(requests("05"), QByteArrayList{"050000ff00"});
    EXPECT_EQ(state.state(), MainState::UpToDate);
    EXPECT_EQ(engine->lastWrite().outcome, WriteOutcome::Complete);
    EXPECT_EQ(engine->lastWrite().pausesMs, 1000);
    EXPECT_EQ(window.maximumShown, 2);
    EXPECT_EQ(window.positions, (QList<int>{1, 2}));
    EXPECT_EQ(traceLines("Original :8000:0064000501020304"), 1);
    EXPECT_EQ(traceLines("WriteData:8000:012C000501020304"), 1);
    EXPECT_EQ(traceLines("(SetAl)S:"), 2);
    EXPECT_EQ(engine->setDataToKXOne(QStringLiteral("NONE")), 0);
}

// The block with its relay block is written and read back; changes elsewhere stay what they are.
TEST_F(Write, BlockTakesItsRelayBlocksAlong)
{
    edit("A", "300");
    edit("C", "-2");
    edit("D", "9");
    engine->writeBlock(*kx.getBlockByNo(1), true);
    EXPECT_EQ(controller.low.toHex(), "012c000501020304");
    EXPECT_EQ(controller.high.toHex(), "fffe000000000000") << "D is no member";
    EXPECT_EQ(item("A").Edit, EditState::kRead);
    EXPECT_EQ(item("D").Edit, EditState::kChanged);
    EXPECT_EQ(item("D").Data(), u"9") << "a change that was not sent is not lost";
    EXPECT_TRUE(engine->lastWrite().notAccepted.isEmpty());
    EXPECT_EQ(requests("06"), (QByteArrayList{"06000001"
                                              "2c",
                                              "06000101"
                                              "2c"}))
        << "the literal belongs to a single write";
    EXPECT_TRUE(window.messages.isEmpty());
}

// What was declined, undone, or belongs to another block never goes along.
TEST_F(Write, OnlyWhatWasChosenGoesOut)
{
    runClockWhileWaiting();
    settings.m_bViewSendConf = true;
    window.answer = MessageResult::kNo;
    edit("A", "300");
    engine->setDataToKXOne(QStringLiteral("A"));
    window.answer = MessageResult::kYes;
    edit("B", "7");
    engine->setDataToKXOne(QStringLiteral("B"));
    EXPECT_EQ(controller.low.toHex(), "0064000701020304");
    EXPECT_EQ(requests("06").first(), "0600000064") << "A was not chosen: the value last read";
    edit("C", "9");
    engine->writeBlock(*kx.getBlockByNo(2), true);
    EXPECT_EQ(controller.registers.at(1), 100);
    EXPECT_EQ(item("A").Data(), u"300");
    EXPECT_EQ(item("A").Edit, EditState::kChanged);
}

// A value outside its limits is not sent until it is corrected, unless it is the controller's own.
TEST_F(Write, LimitsHoldForWhatWasChanged)
{
    controller.high = QByteArray::fromHex("00C8000000000000");
    edit("D", "120");
    engine->setDataToKXAll();
    EXPECT_EQ(engine->lastWrite().outsideLimits, QStringList{QStringLiteral("D")});
    EXPECT_EQ(engine->lastWrite().unsent, QStringList{QStringLiteral("D")});
    EXPECT_EQ(item("D").Data(), u"120") << "to be corrected";
    EXPECT_EQ(grid.cell(item("D").Row(), item("D").Col()).foreColor, 0x0000FFU);
    EXPECT_EQ(item("C").Data(), u"200") << "the controller's own, outside the limits";
    edit("D", "20");
    engine->setDataToKXAll();
    EXPECT_TRUE(engine->lastWrite().unsent.isEmpty());
    EXPECT_EQ(controller.high.toHex(), "00c8001400000000");
}

// A section of commands alone has nothing unread; bytes that were not read are not sent.
TEST_F(Write, CommandsGoOutAndInventedBytesDoNot)
{
    edit("G", "5");
    engine->writeBlock(*kx.getBlockByNo(4), false);
    EXPECT_EQ(controller.log, QByteArrayList{"050013ff00"});
    ASSERT_EQ(engine->lastWrite().failed.size(), 1);
    EXPECT_TRUE(engine->lastWrite().failed.first().startsWith(u"Bad: Direct 8100: not sent"));
    EXPECT_EQ(item("G").Edit, EditState::kChanged);
}

// The other values are in terms of the range: without it they stay behind, and can be sent again.
TEST_F(Write, WithoutTheInputRangeTheRestStaysBehind)
{
    runClockWhileWaiting();
    const auto member = [](int number, const char* keys) {
        return dataSection(number, (QByteArray(keys) + "\nBlockNo=1\nDataLen=2\nDataInfo=0,0,999,<=,<=,0").constData());
    };
    load("[Setting]\nBlockMaxCount=1\nDataMaxCount=2\nMaxRow=9\nMaxCol=1\n[BlockInfo1]\nName=B\n" +
             member(1, "Tag=PQRNO\nKXAddress=8000\nCommRaedSection=R\nCommWriteSection=R") +
             member(2, "Tag=A\nKXAddress=8100\nCommRaedSection=A\nCommWriteSection=A"),
         "[R]\nReadCmd1=Direct,8000,2\nWriteCmd1=Direct,8000,2\n"
         "[A]\nReadCmd1=Direct,8100,2\nWriteCmd1=Direct,8100,2\n");
    engine->getDataFromKX(nullptr);
    edit("PQRNO", "5");
    edit("A", "9");
    controller.deaf = 66;
    engine->setDataToKXAll();
    EXPECT_EQ(requests("4201").size(), 1);
    EXPECT_EQ(engine->lastWrite().unsent, (QStringList{QStringLiteral("PQRNO"), QStringLiteral("A")}));
    EXPECT_EQ(window.messages, QStringList{QStringLiteral("There was no response.")});
    controller.deaf = 0;
    engine->setDataToKXAll();
    EXPECT_EQ(controller.low.left(2).toHex() + controller.high.left(2).toHex(), "00050009");
}

// The settings may load another model while the write that called for them is being reported.
TEST_F(Write, AnotherControllerEndsTheWriteBeforeTheSettingsOpen)
{
    QStringList order;
    QObject::connect(engine.get(), &TransferEngine::written, engine.get(), [&] { order << QStringLiteral("written"); });
    QObject::connect(engine.get(), &TransferEngine::settingsWanted, engine.get(), [&] {
        order << QStringLiteral("settings");
        EXPECT_FALSE(engine->isBusy());
        kx.load(1, &library, QStringLiteral("KX41300000-10A"));
    });
    controller.model = "KX41300000-10A";
    edit("A", "300");
    engine->setDataToKXAll();
    EXPECT_EQ(order, (QStringList{QStringLiteral("written"), QStringLiteral("settings")}));
}

TEST_F(Write, SetLastReadIsKeptAndOldOnesGo)
{
    const QString folder = BackupStore(library).folder();
    const auto kept = [&] { return box.machine.paths.filesIn(folder); };
    edit("A", "300");
    edit("C", "50");
    engine->writeBlock(*kx.getBlockByNo(2), true);
    settings.m_bViewSendConf = true;
    window.answer = MessageResult::kNo;
    engine->setDataToKXAll();
    EXPECT_TRUE(kept().isEmpty()) << "a write that was declined keeps nothing";
    window.answer = MessageResult::kYes;
    engine->setDataToKXAll();
    ASSERT_EQ(kept().size(), 1);
    EXPECT_TRUE(content(folder + u'\\' + kept().first()).contains("\r\nA=100\r\n")) << "what the controller held";
    for (int n = 0; n < BackupStore::kKeptPerModel + 3; ++n) {
        box.clock.advance(1000);
        engine->setDataToKXAll();
    }
    const QStringList files = kept();
    ASSERT_EQ(files.size(), BackupStore::kKeptPerModel);
    EXPECT_TRUE(files.first().startsWith(u"KX41000000-10A_")) << qPrintable(files.first());
    EXPECT_TRUE(content(folder + u'\\' + files.last()).contains("\r\nA=300\r\n"));
    EXPECT_TRUE(content(folder + u'\\' + files.last()).contains("MODEL=KX41000000-10A"));
}

// The clock goes back by a year, old names without a number and other models' files are there.
TEST_F(Write, NewestBackupsStayWhateverTheClockSays)
{
    const BackupStore store(library);
    const QString stem = QStringLiteral("KX41000000-10A_");
    const QString stamp = QStringLiteral("20991231-235959-999.par");
    ASSERT_TRUE(library.MakeDir(store.folder()));
    put(store.folder() + u'\\' + stem + stamp, "old");
    put(store.folder() + u'\\' + stem + QStringLiteral("B_000001_") + stamp, "another model's");
    for (int n = 1; n <= BackupStore::kKeptPerModel + 1; ++n) {
        box.clock.setNow(box.clock.now().addDays(-365));
        EXPECT_EQ(store.keep({QStringLiteral("KX41000000-10A"), {{QStringLiteral("A"), QString::number(n)}}}, {}),
                  QString());
    }
    const QStringList files = box.machine.paths.filesIn(store.folder());
    ASSERT_EQ(files.size(), BackupStore::kKeptPerModel + 1);
    EXPECT_TRUE(files[0].startsWith(stem + QStringLiteral("000002_2005"))) << qPrintable(files[0]);
    EXPECT_TRUE(content(store.folder() + u'\\' + files[BackupStore::kKeptPerModel - 1]).contains("\r\nA=21\r\n"));
    EXPECT_EQ(files.last(), stem + QStringLiteral("B_000001_") + stamp);
}

TEST_F(Write, ExtensionThatIsNoneDoesNotPreventABackup)
{
    const BackupStore store(library);
    for (const char16_t* extension : {u"../x", u"a/b", u"p:q", u"", u" ", u"a\x1b", u"averyveryverylongone"}) {
        box.clock.advance(1);
        EXPECT_EQ(store.keep({QStringLiteral("M"), {}}, QString::fromUtf16(extension)), QString());
    }
    const QStringList files = box.machine.paths.filesIn(store.folder());
    EXPECT_EQ(files.filter(QStringLiteral(".par")).size(), 7) << qPrintable(files.join(u' '));
}

TEST_F(Write, WithoutABackupTheUserIsAsked)
{
    put(BackupStore(library).folder(), "in the way");
    window.answer = MessageResult::kNo;
    edit("A", "300");
    engine->setDataToKXAll();
    EXPECT_TRUE(controller.log.isEmpty());
    ASSERT_EQ(window.messages.size(), 1);
    EXPECT_TRUE(window.messages.first().contains(u"Backup"));
    window.answer = MessageResult::kYes;
    engine->setDataToKXAll();
    EXPECT_EQ(controller.low.left(2).toHex(), "012c");
}

TEST_F(Write, WhatTheControllerDoesNotTakeIsListed)
{
    controller.ignoresWrites = true;
    edit("A", "300");
    engine->setDataToKXAll();
    ASSERT_EQ(engine->lastWrite().notAccepted.size(), 1);
    const NotAccepted& parameter = engine->lastWrite().notAccepted.first();
    EXPECT_EQ(parameter.tag + u' ' + parameter.sent + u' ' + parameter.kept, u"A 300 100");
    EXPECT_EQ(item("A").Data(), u"100") << "the grid shows what the controller holds";
}

struct ValueRow
{
    const char* value;
    const char* memory; // of A
    bool skipped;
};

class Values : public Write, public ::testing::WithParamInterface<ValueRow>
{};

// A text that is no value of the controller leaves the controller's own value where it is.
TEST_P(Values, GoOutOnlyWhenTheControllerCanHoldThem)
{
    edit("A", GetParam().value);
    engine->writeBlock(*kx.getBlockByNo(1), false);
    EXPECT_EQ(controller.low.left(2).toHex(), GetParam().memory);
    EXPECT_EQ(engine->lastWrite().skipped.contains(QStringLiteral("A")), GetParam().skipped);
    EXPECT_EQ(requests("060000").isEmpty(), GetParam().skipped) << "nor to its register";
    EXPECT_EQ(item("A").Edit == EditState::kChanged, GetParam().skipped);
}

INSTANTIATE_TEST_SUITE_P(Texts, Values,
                         ::testing::Values(ValueRow{"-32768", "8000", false}, ValueRow{"32767", "7fff", false},
                                           ValueRow{"32768", "0064", true}, ValueRow{"", "0064", true},
                                           ValueRow{"hot", "0064", true}, ValueRow{"1.5", "0002", false}));

TEST_F(Write, RefusalSendsNothingAndKeepsTheMarks)
{
    const struct
    {
        std::function<void()> prepare;
        WriteOutcome outcome;
        const char* message;
        int settingsShown;
    } rows[] = {{[this] { state.setState(MainState::Confirmed); }, WriteOutcome::NotRead,
                 "Please acquire the up-to-date data from the equipment.", 0},
                {[this] {
                     state.setState(MainState::UpToDate);
                     state.setModel(1, QStringLiteral("KX41300000-10A"));
                 },
                 WriteOutcome::WrongModel, "Model number is different.", 1},
                {[this] {
                     state.setModel(1, QString::fromLatin1(kModel));
                     item("MQCODE").setKnown(false);
                 },
                 WriteOutcome::WrongModel, "Model number is different.", 1},
                {[this] {
                     item("MQCODE").setKnown(true);
                     settings.m_bViewSendConf = true;
                     window.answer = MessageResult::kNo;
                 },
                 WriteOutcome::Declined, "Write to the KX?", 0}};
    edit("A", "300");
    const std::function<void()> writes[] = {[this] { engine->setDataToKXOne(QStringLiteral("A")); },
                                            [this] { engine->writeBlock(*kx.getBlockByNo(1), true); },
                                            [this] { engine->setDataToKXAll(); }};
    for (const auto& row : rows) {
        row.prepare();
        for (const auto& write : writes) {
            SCOPED_TRACE(row.message);
            window.messages.clear();
            const QSignalSpy settingsWanted(engine.get(), &TransferEngine::settingsWanted);
            write();
            EXPECT_EQ(engine->lastWrite().outcome, row.outcome);
            EXPECT_EQ(window.messages, QStringList{QLatin1String(row.message)});
            EXPECT_EQ(settingsWanted.count(), row.settingsShown);
            EXPECT_EQ(item("A").Edit, EditState::kChanged);
            EXPECT_EQ(item("A").Data(), u"300");
        }
    }
    EXPECT_TRUE(controller.log.isEmpty());
}

TEST_F(Write, CancelEndsAfterTheEntryAtHand)
{
    edit("A", "300");
    edit("C", "1");
    window.onPosition = [this](int position) {
        if (position == 1)
            engine->ProgCancel(0);
    };
    engine->setDataToKXAll();
    EXPECT_EQ(engine->lastWrite().outcome, WriteOutcome::Cancelled);
    EXPECT_EQ(controller.log.size(), 1);
    EXPECT_EQ(item("A").Edit, 3) << "it was sent";
    EXPECT_EQ(item("C").Edit, EditState::kChanged);
    EXPECT_TRUE(window.messages.isEmpty()) << "no message, and no read-back";
    window.onPosition = nullptr;
    engine->setDataToKXAll();
    EXPECT_EQ(controller.high.left(2).toHex(), "0001") << "it can be repeated at once";
}

TEST_F(Write, ImageThatWasNotReadIsNotWritten)
{
    kx.ColAdr().find(QStringLiteral("Main"))->clearFilled();
    edit("A", "300");
    engine->setDataToKXAll();
    EXPECT_EQ(controller.low.toHex(), "0064000501020304");
    ASSERT_FALSE(engine->lastWrite().failed.isEmpty());
    EXPECT_EQ(engine->lastWrite().failed.first(), u"Main: not read, so not written");
}

TEST_F(Write, OffLineOnlyTheMemoryPassIsBuilt)
{
    settings.m_bComm = true;
    edit("A", "300");
    engine->setDataToKXAll();
    EXPECT_EQ(item("A").Data(), u"300");
    EXPECT_EQ(item("A").Edit, EditState::kChanged) << "in no controller";
    EXPECT_TRUE(controller.log.isEmpty());
    EXPECT_EQ(traceLines("WriteData:8000:012C"), 1);
    EXPECT_EQ(traceLines("(SetAl)S:"), 0);
    EXPECT_EQ(kx.ColAdr().find(QStringLiteral("Main"))->getInteger(QStringLiteral("8000"), 0), 300);
}

TEST_F(Write, LostRequestIsReportedAndTheOthersAreSent)
{
    runClockWhileWaiting();
    controller.deaf = 6;
    edit("A", "300");
    engine->writeBlock(*kx.getBlockByNo(1), false);
    EXPECT_EQ(controller.low.left(2).toHex(), "012c");
    EXPECT_EQ(requests("05").size(), 1);
    EXPECT_EQ(engine->lastWrite().failed.first(), u"Main: SetAnalog 40001: Timeout");
    EXPECT_EQ(item("A").Edit, EditState::kChanged);
    EXPECT_NE(item("B").Edit, EditState::kChanged) << "it was not changed";
    EXPECT_EQ(engine->lastWrite().unsent, QStringList{QStringLiteral("A")});
    EXPECT_EQ(state.state(), MainState::UpToDate);
}

TEST_F(Write, SingleBitIsStored)
{
    runClockWhileWaiting();
    edit("BIT", "1");
    EXPECT_EQ(engine->setDataToKXOne(QStringLiteral("BIT")), 0) << "the type of a bit";
    EXPECT_EQ(controller.low.toHex(), "0064000505020304");
    edit("BIT", "0");
    engine->setDataToKXOne(QStringLiteral("BIT"));
    EXPECT_EQ(controller.low.toHex(), "0064000501020304");
}

TEST_F(Write, ClosingEndsAPauseAtOnce)
{
    edit("A", "300");
    QTimer::singleShot(0, engine.get(), [this] { QTimer::singleShot(0, engine.get(), [this] { engine->abort(); }); });
    engine->setDataToKXOne(QStringLiteral("A"));
    EXPECT_EQ(engine->lastWrite().outcome, WriteOutcome::Aborted);
    EXPECT_FALSE(engine->isBusy());
}

// The program is asked to end while a message box stands before the write.
TEST_F(Write, NothingIsSentOnceTheProgramIsClosing)
{
    edit("A", "300");
    const QByteArray before = controller.low;
    engine->abort();
    engine->setDataToKXAll();
    engine->setDataToKXOne(QStringLiteral("A"));
    EXPECT_EQ(controller.low.toHex(), before.toHex());
    EXPECT_EQ(engine->lastWrite().requests, 0);
}

} // namespace
