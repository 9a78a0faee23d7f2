#include "ReplyWire.h"

#include <algorithm>

namespace {

constexpr int kStepMs = 1;       // how often the paced reply moves on
constexpr int kBitsPerByte = 10; // start, eight data bits, stop

} // namespace

ReplyWire::ReplyWire(platform::Clock& clock, int paceBaud, QObject* parent)
    : QObject(parent), m_clock(clock), m_paceBaud(paceBaud), m_hold(clock.makeTimer())
{
    connect(m_hold.get(), &platform::Timer::timeout, this, &ReplyWire::release);
    m_pace.setTimerType(Qt::PreciseTimer);
    connect(&m_pace, &QTimer::timeout, this, &ReplyWire::deliver);
}

void ReplyWire::put(const QByteArray& reply, qsizetype requestBytes, int delayMs)
{
    if (reply.isEmpty())
        return;
    if (delayMs <= 0) {
        start(reply, requestBytes);
        return;
    }
    const Held held{m_clock.elapsedMs() + delayMs, reply, requestBytes};
    const auto later = std::upper_bound(m_held.begin(), m_held.end(), held,
                                        [](const Held& left, const Held& right) { return left.dueMs < right.dueMs; });
    m_held.insert(later, held);
    armHold();
}

void ReplyWire::armHold()
{
    if (m_held.empty())
        m_hold->stop();
    else
        m_hold->start(static_cast<int>(std::max<qint64>(m_held.front().dueMs - m_clock.elapsedMs(), 1)));
}

void ReplyWire::release()
{
    while (!m_held.empty() && m_held.front().dueMs <= m_clock.elapsedMs()) {
        const Held held = m_held.front();
        m_held.erase(m_held.begin());
        start(held.reply, held.requestBytes);
    }
    armHold();
}

void ReplyWire::start(const QByteArray& reply, qsizetype requestBytes)
{
    if (m_paceBaud <= 0) {
        Q_EMIT passed(reply);
        return;
    }
    m_onWire += reply;
    if (m_pace.isActive())
        return;
    m_delivered = 0;
    m_requestBytes = requestBytes;
    m_sinceRequest.start();
    m_pace.start(kStepMs);
}

// Bytes leave on an absolute schedule that starts when the request's own bytes have passed the wire.
void ReplyWire::deliver()
{
    const double bytesPassed = static_cast<double>(m_sinceRequest.nsecsElapsed()) * 1e-9 * m_paceBaud / kBitsPerByte;
    const auto due = std::min(static_cast<qsizetype>(bytesPassed) - m_requestBytes, m_onWire.size());
    if (due <= m_delivered)
        return;
    const QByteArray piece = m_onWire.mid(m_delivered, due - m_delivered);
    m_delivered = due;
    if (m_delivered == m_onWire.size()) {
        m_pace.stop();
        m_onWire.clear();
    }
    Q_EMIT passed(piece);
}
