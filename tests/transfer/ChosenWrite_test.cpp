#include "ScriptedTransfer.h"
#include "Table.h"

#include <QRegularExpression>
#include <QTimer>

namespace {

// A is 100 and C 200; the user makes them 300 and 9 and writes these two. Without a fault the requests are: 1 model, 2
// and 3 the images of A and C; 4 and 5 their memory; 6 the set value A, 7 and 8 what puts it in force; 9 and 10 the
// images again.
class ChosenWrite : public ScriptedTransfer
{
protected:
    ChosenWrite()
    {
        runClockWhileWaiting();
        engine->getDataFromKX(nullptr);
        edit("A", "300");
        edit("C", "9");
        log.clear();
        window.messages.clear();
    }

    void edit(const QByteArray& tag, const QByteArray& value)
    {
        item(tag).setData(QLatin1String(value));
        kx.refreshCell(item(tag));
    }

    // Somebody at the front panel.
    void poke(int address, const QByteArray& digits)
    {
        clsModbus master;
        master.setSlaveAddress(1);
        master.setDigitalVals({1, QByteArray::fromHex(digits)});
        master.WriteDirectMemory(address, static_cast<int>(digits.size()) / 2);
        controller->answer(master.GetSendMessage());
    }

    static QByteArray damaged(const QString& kind, QByteArray reply)
    {
        if (kind == u"silent")
            return {};
        if (kind == u"drop")
            reply.remove(reply.size() / 2, 1);
        else if (kind == u"corrupt")
            reply[reply.size() / 2] = static_cast<char>(reply.at(reply.size() / 2) ^ 4);
        return reply;
    }

    // "KIND N": what happens to request N; with "+" to all from there on.
    void setFault(const QString& text)
    {
        const QString kind = text.section(u' ', 0, 0);
        const bool isLasting = text.endsWith(u'+');
        const qsizetype at = text.section(u' ', 1, 1).remove(u'+').toInt();
        script = [this, kind, isLasting, at](const QByteArray& request) -> Reply {
            if (log.size() != at && !(isLasting && log.size() > at))
                return std::nullopt;
            if (kind == u"cancel" || kind == u"abort")
                QTimer::singleShot(0, engine.get(),
                                   [this, kind] { kind == u"cancel" ? engine->ProgCancel(0) : engine->abort(); });
            if (kind == u"exception")
                return modbusframe::toWire(request.left(1) + static_cast<char>(request.at(1) | 0x80) + '\x04', false);
            if (kind == u"exchange")
                return modbusframe::toWire(request.left(2) + QByteArray::fromHex("000E") + "KX41300000-10A", false);
            if (kind == u"unplug")
                QTimer::singleShot(0, engine.get(), [this] { line.unplug(); });
            if (kind.startsWith(u"poke-"))
                poke(kind.mid(5, 4).toInt(nullptr, 16), kind.mid(10).toLatin1());
            return kind == u"cancel" || kind == u"abort" || kind.startsWith(u"poke-")
                       ? Reply()
                       : Reply(kind == u"unplug" ? QByteArray() : damaged(kind, controller->answer(request)));
        };
    }

    QString outcomes() const
    {
        static const QStringList kWords{QStringLiteral("not-sent"), QStringLiteral("conflict"),
                                        QStringLiteral("refused"),  QStringLiteral("failed"),
                                        QStringLiteral("kept"),     QStringLiteral("accepted")};
        QStringList rows;
        for (const SentParameter& row : engine->lastWrite().parameters)
            rows << row.tag + u'=' + kWords.at(static_cast<int>(row.outcome)) +
                        (row.outcome == SendOutcome::Conflict ? u'/' + row.before + u'/' + row.held : QString());
        return rows.join(u' ');
    }

    // What is called accepted is there; whatever was called, no other byte has changed.
    void expectTrue(const std::string& before)
    {
        for (const SentParameter& row : engine->lastWrite().parameters) {
            const bool isA = row.tag == u"A";
            if (row.outcome == SendOutcome::Accepted) {
                EXPECT_EQ(isA ? memory(0x8000, 2) : memory(0x8100, 2), isA ? "012C" : "0009");
                EXPECT_EQ(kx.getDataByTag(row.tag)->Edit, EditState::kRead);
                EXPECT_EQ(kx.getDataByTag(row.tag)->sendMark, SendMark::None);
            } else {
                EXPECT_EQ(kx.getDataByTag(row.tag)->Edit, EditState::kChanged) << "it can be sent again";
                EXPECT_EQ(kx.getDataByTag(row.tag)->Data().toStdString(), isA ? "300" : "9");
            }
        }
        EXPECT_EQ(memory(0x8002, 6) + memory(0x8102, 6), before);
    }
};

class ChosenWriteTable : public ChosenWrite, public ::testing::WithParamInterface<QStringList>
{};

TEST_P(ChosenWriteTable, SaysOfEachWhatBecameOfIt)
{
    const QString fault = GetParam()[0];
    setFault(fault);
    std::string others = memory(0x8002, 6) + memory(0x8102, 6);
    if (fault.startsWith(u"poke-8003"))
        others.replace(2, 2, "2A");
    engine->writeChosen({QStringLiteral("A"), QStringLiteral("C")});
    const auto said = [&] { // without the device, which has another name in each run
        return window.messages.join(u'|')
            .replace(u'\n', QStringLiteral(" / "))
            .remove(QRegularExpression(QStringLiteral(" \\(/dev/[^)]*\\)")));
    };
    const QStringList seen{QString::number(static_cast<int>(engine->lastWrite().outcome)), outcomes(),
                           QString::fromStdString(memory(0x8000, 2) + ' ' + memory(0x8100, 2)),
                           QString::number(log.size()), window.messages.isEmpty() ? QStringLiteral("-") : said()};
    EXPECT_EQ(seen.join(u'\t').toStdString(), GetParam().mid(1).join(u'\t').toStdString());
    expectTrue(others);
    EXPECT_FALSE(engine->isBusy());
    EXPECT_FALSE(window.progressShown);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ChosenWriteTable, ::testing::ValuesIn(tableRows("transfer/chosen_writes.tsv")), [](const auto& row) {
        QString name = row.param[0];
        return name.replace(u'+', u'f').remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9]"))).toStdString();
    });

// A command that the controller does not show has no value to be compared with.
TEST_F(ChosenWrite, ACommandThatIsNeverReadGoesOut)
{
    link.reset();
    connectTo("command");
    engine->getDataFromKX(nullptr);
    for (const bool isDeaf : {true, false}) {
        log.clear();
        edit("RUN", "1");
        script = [isDeaf](const QByteArray& request) {
            return isDeaf && request.at(1) == 5 ? Reply(QByteArray()) : Reply();
        };
        engine->writeChosen({QStringLiteral("RUN")});
        EXPECT_EQ(outcomes(), isDeaf ? u"RUN=failed" : u"RUN=accepted");
        EXPECT_EQ(requests("05"), QByteArrayList{"050000ff00"});
        EXPECT_EQ(item("RUN").Data(), u"1");
        EXPECT_EQ(item("RUN").sendMark, isDeaf ? SendMark::Failed : SendMark::None);
    }
}

} // namespace
