#include "BackupStore.h"
#include "Journal.h"
#include "ScriptedTransfer.h"
#include "Table.h"

#include <QSignalSpy>
#include <QTimer>

namespace {

// After a read: A is 100, B 5, C and G 200, F 772.
class Write : public ScriptedTransfer
{
protected:
    Write() { reread(); }

    void reread()
    {
        engine->getDataFromKX(nullptr);
        log.clear();
        window.positions.clear();
    }

    void edit(const QByteArray& tag, const QByteArray& value)
    {
        item(tag).setData(QLatin1String(value));
        kx.refreshCell(item(tag));
    }
    void writeBlock(int number, bool readBack) { engine->writeBlock(*kx.getBlockByNo(number), readBack); }
    int writeOne(const char* tag) { return engine->setDataToKXOne(QLatin1String(tag)); }
    std::string low() const { return memory(0x8000, 8); }
    std::string high() const { return memory(0x8100, 4); }
    const WriteReport& report() const { return engine->lastWrite(); }
};

// Rows of the table: setup, edits, action; then what is expected.
class WriteTable : public Write, public ::testing::WithParamInterface<QStringList>
{
protected:
    // Answers a write of memory as if it had been done.
    static Reply onlyConfirmed(const QByteArray& request)
    {
        const bool writesMemory = request.at(1) == 66 && request.at(2) != 0;
        return writesMemory ? Reply(modbusframe::toWire(request.left(8), false)) : Reply();
    }

    void prepare(const QString& setup)
    {
        const std::pair<const char16_t*, std::function<void()>> steps[] = {
            {u"deaf-66", [this] { beDeafTo(66); }},
            {u"deaf-6", [this] { beDeafTo(6); }},
            {u"keeps-memory", [this] { script = onlyConfirmed; }},
            {u"asks", [this] { settings.m_bViewSendConf = true; }},
            {u"declines", [this] { window.answer = MessageResult::kNo; }},
            {u"not-read", [this] { state.setState(MainState::Confirmed); }},
            {u"other-model", [this] { state.setModel(1, QStringLiteral("KX41300000-10A")); }},
            {u"unknown-model", [this] { item("MQCODE").setKnown(false); }},
            {u"without-main", [this] { kx.ColAdr().find(QStringLiteral("Main"))->clearFilled(); }},
            {u"off-line", [this] { settings.m_bComm = true; }},
            {u"cancels", [this] { window.onPosition = [this](int) { engine->ProgCancel(0); }; }}};
        for (const auto& [name, step] : steps) {
            if (setup.split(u' ').contains(name))
                step();
        }
    }

    void act(const QString& action)
    {
        const int block = action.section(u' ', 1, 1).toInt();
        if (action == u"all")
            engine->setDataToKXAll();
        else if (action.startsWith(u"one"))
            engine->setDataToKXOne(action.section(u' ', 1));
        else if (action.contains(u"then"))
            engine->writeBlockThenOne(kx.getBlockByNo(block), action.section(u' ', 3));
        else
            writeBlock(block, action.endsWith(u"back"));
    }

    // The lists of the report that are not empty.
    QString reported() const
    {
        QStringList notAccepted;
        for (const NotAccepted& entry : report().notAccepted)
            notAccepted << entry.tag + u'=' + entry.sent + u'/' + entry.kept;
        QStringList failed;
        for (const FailedRequest& request : report().failed)
            failed << request.text();
        QStringList lists;
        for (const auto& [name, list] : {std::pair(u"failed ", failed), std::pair(u"skipped ", report().skipped),
                                         std::pair(u"outside ", report().outsideLimits),
                                         std::pair(u"unsent ", report().unsent), std::pair(u"kept ", notAccepted)}) {
            if (!list.isEmpty())
                lists << QString::fromUtf16(name) + list.join(u',');
        }
        return lists.join(QStringLiteral("; "));
    }

    QString changed() const
    {
        QStringList tags;
        for (const auto& each : kx.items()) {
            if (each->Edit == EditState::kChanged)
                tags << each->Key() + u'=' + each->Data();
        }
        return tags.join(u' ');
    }
};

TEST_P(WriteTable, EndsAsItSays)
{
    runClockWhileWaiting();
    const QStringList& row = GetParam();
    for (const QString& text : row[2].split(u' '))
        edit(text.section(u'=', 0, 0).toLatin1(), text.section(u'=', 1).toLatin1());
    prepare(row[1]);
    const QSignalSpy settingsWanted(engine.get(), &TransferEngine::settingsWanted);
    act(row[3]);
    const QByteArrayList sent = requests("4201") + requests("05") + requests("06");
    const QStringList seen{QString::number(static_cast<int>(report().outcome)),
                           QString::fromStdString(low() + ' ' + high()),
                           QString::fromLatin1(sent.join(' ')),
                           window.messages.join(u'|').replace(u'\n', QStringLiteral(" / ")) +
                               (settingsWanted.isEmpty() ? QString() : QStringLiteral("|#settings")),
                           reported(),
                           changed()};
    EXPECT_EQ(seen.join(u'\t').toStdString(), row.mid(4).join(u'\t').toStdString());
}

INSTANTIATE_TEST_SUITE_P(Rows, WriteTable, ::testing::ValuesIn(tableRows("transfer/writes.tsv")),
                         [](const auto& row) { return row.param[0].toStdString(); });

TEST_F(Write, OneParameterGoesWithItsImage)
{
    runClockWhileWaiting();
    QList<TransferEngine::Activity> activities;
    QObject::connect(engine.get(), &TransferEngine::activityChanged, engine.get(), [&] {
        activities << engine->activity();
        if (engine->isBusy())
            engine->getDataFromKX(nullptr); // one at a time
    });
    edit("A", "300");
    EXPECT_EQ(writeOne("A"), 1);
    EXPECT_EQ(activities, (QList{TransferEngine::Activity::Writing, TransferEngine::Activity::Idle}));
    EXPECT_EQ(report().requests, 4);
    EXPECT_EQ(report().accepted, 4);
    EXPECT_EQ(report().pausesMs, 1000);
    EXPECT_EQ(traceLines("Original :8000:0064000500000304"), 1);
    EXPECT_EQ(traceLines("WriteData:8000:012C000500000304"), 1);
    EXPECT_EQ(traceLines("(SetAl)S:"), 2);
    EXPECT_EQ(writeOne("NONE"), 0);
    EXPECT_EQ(report().outcome, WriteOutcome::NothingToDo);
}

// What was declined, undone, or belongs to another block never goes along.
TEST_F(Write, OnlyWhatWasChosenGoesOut)
{
    runClockWhileWaiting();
    settings.m_bViewSendConf = true;
    window.answer = MessageResult::kNo;
    edit("A", "300");
    writeOne("A");
    window.answer = MessageResult::kYes;
    edit("B", "7");
    writeOne("B");
    EXPECT_EQ(low(), "0064000700000304");
    EXPECT_EQ(requests("06").value(0), "0600000064") << "A was not chosen: the value last read";
    edit("C", "9");
    writeBlock(2, true);
    EXPECT_EQ(values().value(QStringLiteral("REG 40002")), u"100");
    EXPECT_EQ(item("A").Data(), u"300");
    EXPECT_EQ(item("A").Edit, EditState::kChanged);
}

// The other values are in terms of the range: without it they stay behind, and can be sent again.
TEST_F(Write, WithoutTheInputRangeTheRestStaysBehind)
{
    runClockWhileWaiting();
    link.reset();
    connectTo("range");
    reread();
    edit("PQRNO", "5");
    edit("A", "9");
    beDeafTo(66);
    engine->setDataToKXAll();
    EXPECT_EQ(requests("4201").size(), 1);
    EXPECT_EQ(report().unsent, (QStringList{QStringLiteral("PQRNO"), QStringLiteral("A")}));
    EXPECT_EQ(window.messages, QStringList{QStringLiteral("There was no response.\nTime-out")});
    script = nullptr;
    log.clear();
    engine->setDataToKXAll();
    EXPECT_EQ(requests("4201").value(0).mid(8, 4), "8000") << "the range comes first";
    EXPECT_EQ(memory(0x8000, 2) + memory(0x8100, 2), "00050009");
}

// The settings may load another model while the write that called for them is being reported.
TEST_F(Write, AnotherControllerEndsTheWriteBeforeTheSettingsOpen)
{
    const QString other = QStringLiteral("KX41300000-10A");
    controller = std::make_unique<SimulatedController>(library, 1, other, 1, 0);
    QStringList order;
    QObject::connect(engine.get(), &TransferEngine::written, engine.get(), [&] { order << QStringLiteral("written"); });
    QObject::connect(engine.get(), &TransferEngine::settingsWanted, engine.get(), [&] {
        order << QStringLiteral("settings");
        EXPECT_FALSE(engine->isBusy());
        kx.load(1, &library, other);
    });
    edit("A", "300");
    engine->setDataToKXAll();
    EXPECT_EQ(order, (QStringList{QStringLiteral("written"), QStringLiteral("settings")}));
}

TEST_F(Write, SetLastReadIsKept)
{
    const QString folder = BackupStore(library).folder();
    const auto kept = [&] { return box.machine.paths.filesIn(folder); };
    edit("A", "300");
    settings.m_bViewSendConf = true;
    window.answer = MessageResult::kNo;
    engine->setDataToKXAll();
    EXPECT_TRUE(kept().isEmpty()) << "a write that was declined keeps nothing";
    window.answer = MessageResult::kYes;
    engine->setDataToKXAll();
    ASSERT_EQ(kept().size(), 1);
    const QByteArray set = content(folder + u'\\' + kept().first());
    EXPECT_TRUE(set.contains("\r\nA=100\r\n") && set.contains("MODEL=KX41000000-10A")) << "what the controller held";
    EXPECT_TRUE(
        set.contains("Comment=before writing all parameters; COM1 " + link->device().toUtf8() + ", slave 1\r\n"));
    runClockWhileWaiting();
    for (const int backups : {2, 2}) { // before a single parameter too; what is kept already is not kept again
        edit("A", "300");
        engine->setDataToKXOne(QStringLiteral("A"));
        EXPECT_EQ(kept().size(), backups);
    }
    EXPECT_TRUE(content(folder + u'\\' + kept().last()).contains("before writing A;"));
}

TEST_F(Write, WithoutABackupTheUserIsAsked)
{
    put(BackupStore(library).folder(), "in the way");
    edit("A", "300");
    engine->setBackup(TransferEngine::Backup::Required);
    engine->setDataToKXAll();
    EXPECT_TRUE(window.messages.isEmpty() && !engine->backupError().isEmpty());
    EXPECT_EQ(report().outcome, WriteOutcome::Declined);
    engine->setBackup(TransferEngine::Backup::AskWithout);
    window.answer = MessageResult::kNo;
    engine->setDataToKXAll();
    EXPECT_TRUE(log.isEmpty());
    ASSERT_EQ(window.messages.size(), 1);
    EXPECT_TRUE(window.messages.first().contains(u"Backup"));
    window.answer = MessageResult::kYes;
    engine->setDataToKXAll();
    EXPECT_EQ(low().substr(0, 4), "012C");
}

// The line about a write is there before its first frame, and what became of each at its end.
TEST_F(Write, IsEnteredInTheHistory)
{
    const Journal journal(box.context);
    edit("A", "300");
    edit("C", "100000");
    script = [&](const QByteArray&) -> Reply {
        EXPECT_EQ(journal.read().entries.size(), 1) << "begun";
        return std::nullopt;
    };
    engine->setDataToKXAll();
    ASSERT_EQ(journal.read().entries.size(), 1);
    const JournalEntry entry = journal.read().entries.front();
    EXPECT_EQ(entry.cause + u' ' + entry.outcome + u' ' + entry.mode, u"all parameters complete RTU");
    QStringList rows;
    for (const JournalParameter& parameter : entry.parameters)
        rows << parameter.tag + u' ' + parameter.held + u' ' + parameter.value + u' ' + parameter.outcome;
    EXPECT_EQ(rows.join(u'|'), u"A 100 300 accepted|C 200 100000 outside its limits") << "what changes";

    ASSERT_TRUE(QDir(journal.folder()).removeRecursively());
    ASSERT_TRUE(box.put(QStringLiteral("C:\\Users\\state\\vorlant"), "in the way"));
    script = nullptr;
    log.clear();
    edit("A", "400");
    window.answer = MessageResult::kNo;
    engine->setDataToKXAll();
    EXPECT_TRUE(log.isEmpty() && window.messages.last().contains(u"history")) << qPrintable(window.messages.last());
    EXPECT_EQ(item("A").Edit, EditState::kChanged);
    window.answer = MessageResult::kYes;
    engine->setDataToKXAll();
    EXPECT_EQ(low().substr(0, 4), "0190");
}

// Also while a message box stands before the write.
TEST_F(Write, NothingIsSentOnceTheProgramIsClosing)
{
    edit("A", "300");
    QTimer::singleShot(0, engine.get(), [this] { QTimer::singleShot(0, engine.get(), [this] { engine->abort(); }); });
    writeOne("A");
    EXPECT_EQ(report().outcome, WriteOutcome::Aborted) << "at once, without the pause";
    EXPECT_FALSE(engine->isBusy());
    log.clear();
    engine->setDataToKXAll();
    writeOne("A");
    EXPECT_TRUE(log.isEmpty());
}

} // namespace
