#include "FrontPanel.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace {

const QString kCommand = QStringLiteral("poke ");

// text: "ADDRESS=BYTES", or with a time "ADDRESS=BYTES@SECONDS".
std::optional<Poke> parsePoke(const QString& text, bool isTimed)
{
    static const QRegularExpression kForm(
        QStringLiteral("\\A([0-9A-Fa-f]{1,8})=((?:[0-9A-Fa-f]{2}){1,%1})(?:@([0-9]{1,5}(?:\\.[0-9]{1,3})?))?\\z")
            .arg(clsModbus::kValues));
    const auto form = kForm.match(text);
    if (!form.hasMatch() || form.captured(3).isEmpty() == isTimed)
        return std::nullopt;
    const double seconds = form.captured(3).toDouble();
    if (seconds > FrontPanel::kMaxSeconds)
        return std::nullopt;
    return Poke{form.captured(1).toUInt(nullptr, 16), QByteArray::fromHex(form.captured(2).toLatin1()),
                qRound(seconds * platform::kMsPerSecond)};
}

} // namespace

FrontPanel::FrontPanel(SimulatedController& controller, platform::Clock& clock, QObject* parent)
    : QObject(parent), m_controller(controller), m_clock(clock), m_timer(clock.makeTimer())
{
    connect(m_timer.get(), &platform::Timer::timeout, this, &FrontPanel::release);
}

platform::Result<> FrontPanel::add(const QString& poke)
{
    const auto parsed = parsePoke(poke, true);
    if (!parsed)
        return platform::Failure{
            QStringLiteral("not ADDRESS=BYTES@SECONDS, such as 8000=0A1B@2.5: address and 1 to %1 bytes in "
                           "hexadecimal, 0 to %2 seconds")
                .arg(clsModbus::kValues)
                .arg(kMaxSeconds)};
    const platform::Result<> found = m_controller.findMemory(parsed->address, parsed->bytes.size());
    if (!found.ok())
        return found;
    const auto later = std::upper_bound(m_pokes.begin(), m_pokes.end(), *parsed,
                                        [](const Poke& left, const Poke& right) { return left.atMs < right.atMs; });
    m_pokes.insert(later, *parsed);
    return {};
}

platform::Result<> FrontPanel::obey(const QString& line)
{
    const auto parsed =
        line.startsWith(kCommand) ? parsePoke(line.mid(kCommand.size()).trimmed(), false) : std::nullopt;
    if (!parsed)
        return platform::Failure{
            QStringLiteral("not poke ADDRESS=BYTES, such as poke 8000=0A1B: address and 1 to %1 bytes in "
                           "hexadecimal")
                .arg(clsModbus::kValues)};
    return m_controller.poke(parsed->address, parsed->bytes);
}

void FrontPanel::start()
{
    m_startMs = m_clock.elapsedMs();
    release();
}

// add has looked for the memory.
void FrontPanel::release()
{
    const qint64 now = m_clock.elapsedMs() - m_startMs;
    while (!m_pokes.empty() && m_pokes.front().atMs <= now) {
        [[maybe_unused]] const platform::Result<> done =
            m_controller.poke(m_pokes.front().address, m_pokes.front().bytes);
        m_pokes.erase(m_pokes.begin());
    }
    if (m_pokes.empty())
        m_timer->stop();
    else
        m_timer->start(static_cast<int>(m_pokes.front().atMs - now));
}
