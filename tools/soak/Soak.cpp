#include "Soak.h"

#include "ItemLimits.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr int kDraws = 30; // of a value within its limits

constexpr int kLongestDelayMs = 9000; // later than the time-out of 5 s, but no later than a transfer waits for
constexpr int kSettleSeconds = 60;    // nothing is on its way any more

// The state of a simulated controller, taken apart: "MEM 8000" -> "03".
QHash<QString, QString> linesOf(const QByteArray& state)
{
    QHash<QString, QString> held;
    const QStringList lines = QString::fromLatin1(state).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& text : lines)
        held.insert(text.section(u' ', 0, 1), text.section(u' ', 2));
    return held;
}

// What the read entry would bring: a register, the first eight bits, or bytes of the memory.
QByteArray replyOf(const QHash<QString, QString>& held, const clsKXAdr& image, int entry)
{
    const QString command = image.Cmd(entry);
    const QString address = image.Adr(entry);
    if (command == u"GetAnalogInput")
        return clsModbus::IntToByte(held.value(QStringLiteral("IREG ") + address).toShort());
    if (command == u"GetAnalogSet")
        return clsModbus::IntToByte(held.value(QStringLiteral("REG ") + address).toShort());
    const bool isCoils = command == u"GetDigitalSet";
    QByteArray bytes;
    int bits = 0;
    for (int i = 0; i < image.Cnt(entry); ++i) {
        if (isCoils)
            bits |= held.value(QStringLiteral("COIL %1").arg(address.toInt() + i)) == u"1" ? 1 << i : 0;
        else
            bytes += held.value(QStringLiteral("MEM ") + QString::number(address.toInt(nullptr, 16) + i, 16).toUpper())
                         .toLatin1();
    }
    return isCoils ? QByteArray(1, static_cast<char>(bits)) : QByteArray::fromHex(bytes);
}

QByteArray contentOf(const clsKXAdr& image)
{
    return image.m_bModbus ? clsModbus::IntToByte(image.getInteger(QString(), 0))
                           : image.getOrgData().left(image.imageSize());
}

} // namespace

Soak::Soak(int mode, unsigned seed, SoakResult& result)
    : m_result(result), m_random(seed), m_state(m_program.settings), m_kx(m_program.library),
      m_controller(m_far.library, 1, RealModel::kModelString, 1, mode),
      m_line(m_controller, Faults(), 0, m_program.box.clock), m_link(m_ports, m_program.box.clock),
      m_engine({m_kx, m_link, m_program.settings, m_trace, m_shell, m_shell, m_state}), m_idle(m_program.box.clock),
      m_start(m_program.box.clock.now()), m_witness(m_far.library)
{
    m_program.box.context.messages = m_shell;
    m_state.setModel(1, RealModel::kModelString);
    m_state.setLine(1, mode);
    m_state.setState(MainState::Confirmed);
    m_trace.setLogPath(m_program.box.machine.folders.program());
    m_trace.setLogFileName(QStringLiteral("Trc.log"));
    m_kx.setSpread(&m_grid);
    m_view.setGrid(&m_grid);
    m_view.resize(1280, 900);
    m_kx.load(1, &m_program.library, RealModel::kModelString);
    m_witness.setSpread(&m_witnessGrid);
    m_witness.load(1, &m_far.library, RealModel::kModelString);
    QObject::connect(&m_line, &SimulatorLine::traced, &m_line, [this] {
        m_idle.touch();
        snapshot();
    });
    if (!m_line.openTerminal())
        throw std::runtime_error("no pseudo-terminal");
    m_ports.assign(1, m_line.path());
    m_link.init(1, &m_program.library);
}

void Soak::cycle()
{
    ++m_result.cycles;
    drawFaults();
    if (m_result.cycles % 2 == 0)
        write();
    else
        read();
    m_view.viewport()->grab();
}

void Soak::finish()
{
    m_line.setFaults(Faults());
    m_faults = QStringLiteral("none");
    advance(kSettleSeconds);
    read();
    if (m_engine.lastRead().outcome != ReadOutcome::Complete || m_engine.lastRead().failures > 0)
        m_result.wrong << QStringLiteral("the read without faults was not clean: ") + m_engine.lastRead().lastFailure;
    const Values values = held().values;
    for (const auto& item : m_kx.items()) {
        if (!item->RSection().isEmpty() && !(item->isKnown() && isSameValue(item->Data(), values.value(item->Key()))))
            m_result.wrong << QStringLiteral("at the end %1 is %2, the controller has %3")
                                  .arg(item->Key(), item->Data(), values.value(item->Key()));
    }
}

qint64 Soak::lineSeconds() const
{
    return m_start.secsTo(m_program.box.clock.now());
}

// None to three kinds, each for some of the replies.
void Soak::drawFaults()
{
    static const QStringList kKinds{
        QStringLiteral("silent"),   QStringLiteral("drop"),        QStringLiteral("corrupt"),
        QStringLiteral("truncate"), QStringLiteral("extra"),       QStringLiteral("exception:3"),
        QStringLiteral("noise"),    QStringLiteral("wrong-slave"), QStringLiteral("reset"),
        QStringLiteral("delay:%1"), QStringLiteral("delay:%1")};
    QStringList texts;
    for (int count = pick(0, 3); count > 0; --count) {
        QString kind = kKinds[pick(0, static_cast<int>(kKinds.size()) - 1)];
        if (kind.contains(u'%'))
            kind = kind.arg(pick(1, kLongestDelayMs));
        texts << kind + QStringLiteral("@0.%1").arg(pick(1, 4));
    }
    Faults faults(static_cast<unsigned>(pick(1, INT_MAX)));
    for (const QString& text : texts) {
        const platform::Result<> added = faults.add(text);
        if (!added.ok())
            throw std::runtime_error(added.error().toStdString());
    }
    m_faults = texts.isEmpty() ? QStringLiteral("none") : texts.join(u' ');
    m_line.setFaults(faults);
}

void Soak::advance(int seconds)
{
    const QDateTime end = m_program.box.clock.now().addSecs(seconds);
    while (m_program.box.clock.now() < end)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void Soak::snapshot()
{
    const QByteArray state = m_controller.state();
    if (state == m_held)
        return;
    m_held = state;
    m_past.push_back(held());
}

// The controller's state by way of the witness: its images filled directly, its items taken from them. The discrete
// inputs are not part of the state; they show the same bits as the memory that is read before them.
Soak::Held Soak::held()
{
    const QHash<QString, QString> lines = linesOf(m_controller.state());
    Held held;
    for (int i = 0; i < m_witness.ColAdr().count(); ++i) {
        clsKXAdr& image = m_witness.ColAdr().at(i);
        const int last = image.Cmd(image.MsgMax()) == u"GetDigitalInput" ? 1 : image.MsgMax();
        const QByteArray bytes = replyOf(lines, image, last);
        if (image.m_bModbus)
            image.setInteger(QString(), clsModbus::ByteToInt(bytes, 0));
        else
            image.setData({1, bytes});
        image.markFilled();
        held.images.insert(image.Section(), contentOf(image));
    }
    m_witness.refreshSpread(true, nullptr);
    for (const auto& item : m_witness.items())
        held.values.insert(item->Key(), item->Data());
    return held;
}

void Soak::read()
{
    m_past.assign(1, held());
    m_engine.getDataFromKX(nullptr);
    noteRead(nullptr);
}

void Soak::write()
{
    if (m_state.state() != MainState::UpToDate)
        read();
    changeSome();
    m_past.assign(1, held());
    const auto& blocks = m_kx.BlockCol();
    const clsBlock& block = *blocks[static_cast<size_t>(pick(0, static_cast<int>(blocks.size()) - 1))];
    const bool all = pick(0, 2) > 0;
    Values sent;
    for (const auto& item : m_kx.items()) {
        const bool goesOut =
            all || std::find(block.Tags().begin(), block.Tags().end(), item.get()) != block.Tags().end();
        if (goesOut && item->isKnown() && m_kx.isWritable(*item) && item->MType() != ItemType::String)
            sent.insert(item->Key(), item->Data());
    }
    if (all)
        m_engine.setDataToKXAll();
    else
        m_engine.writeBlock(block, true);
    noteWrite(sent, all);
}

void Soak::changeSome()
{
    for (const auto& item : m_kx.items()) {
        if (!item->isKnown() || !m_kx.isWritable(*item) || item->MType() == ItemType::String || pick(0, 3) > 0)
            continue;
        // Most are values that may go out; some are outside their limits and must stay behind.
        const QString before = item->Data();
        item->setData(drawnValue(*item));
        for (int tries = pick(0, 7) == 0 ? 0 : kDraws; tries > 0 && !item->isAllowed(); --tries)
            item->setData(tries == 1 ? before : drawnValue(*item));
        item->Edit = EditState::kChanged;
    }
}

QString Soak::drawnValue(const clsData& item)
{
    const std::vector<ItemChoice> choices = item.choices();
    if (!choices.empty())
        return choices[static_cast<size_t>(pick(0, static_cast<int>(choices.size()) - 1))].stored;
    if (item.DataLen() == 1)
        return QString::number(pick(0, 255));
    return item.DataLen() == 2 ? QString::number(pick(-9999, 9999)) : QString::number(pick(-999, 999) / 8.0);
}

void Soak::noteRead(const Values* shown)
{
    const ReadReport& report = m_engine.lastRead();
    m_result.repetitions += report.failures;
    const bool clean = report.outcome == ReadOutcome::Complete && report.givenUp.isEmpty();
    ++(clean ? m_result.cleanReads : m_result.reportedFailures);
    if (report.outcome == ReadOutcome::Complete)
        compareKnown(shown);
}

bool Soak::wasHeld(const QString& tag, const QString& value) const
{
    return std::any_of(m_past.begin(), m_past.end(),
                       [&](const Held& held) { return isSameValue(held.values.value(tag), value); });
}

// What the program holds for the controller's is what the controller had while the transfer ran.
void Soak::compareKnown(const Values* shown)
{
    for (int i = 0; i < m_kx.ColAdr().count(); ++i) {
        const clsKXAdr& image = m_kx.ColAdr().at(i);
        const bool held = std::any_of(m_past.begin(), m_past.end(), [&](const Held& past) {
            return past.images.value(image.Section()) == contentOf(image);
        });
        if (image.isFilled() && !held)
            noteWrong(QStringLiteral("image %1 is %2, was %3")
                          .arg(image.Section(), QLatin1String(contentOf(image).toHex()),
                               QLatin1String(m_past.back().images.value(image.Section()).toHex())));
    }
    // Items without a cell may have been set by a choice.
    for (const auto& item : m_kx.items()) {
        const bool isShown = item->Visible() && (shown == nullptr || shown->contains(item->Key()));
        if (isShown && item->isKnown() && item->Edit == EditState::kRead && !wasHeld(item->Key(), item->Data()))
            noteWrong(QStringLiteral("%1 is %2, was %3")
                          .arg(item->Key(), item->Data(), m_past.back().values.value(item->Key())));
    }
}

void Soak::noteWrong(const QString& what)
{
    m_result.wrong << QStringLiteral("cycle %1 with %2: %3").arg(m_result.cycles).arg(m_faults, what);
}

// After the write of a block only its own items are shown anew.
void Soak::noteWrite(const Values& sent, bool all)
{
    const WriteReport& report = m_engine.lastWrite();
    const bool walked = report.outcome == WriteOutcome::Complete;
    if (walked)
        noteRead(all ? nullptr : &sent);
    const bool clean = walked && report.failed.isEmpty() && report.skipped.isEmpty() && report.notAccepted.isEmpty() &&
                       m_engine.lastRead().outcome == ReadOutcome::Complete && m_engine.lastRead().givenUp.isEmpty();
    ++(clean ? m_result.cleanWrites : m_result.reportedFailures);
    if (!walked || !report.failed.isEmpty())
        return;
    // No entry is reported as failed: then the controller has had every value that went out.
    for (auto value = sent.cbegin(); value != sent.cend(); ++value) {
        if (!report.unsent.contains(value.key()) && !wasHeld(value.key(), value.value()))
            noteWrong(QStringLiteral("%1 is acknowledged as %2, was %3")
                          .arg(value.key(), value.value(), m_past.back().values.value(value.key())));
    }
}
