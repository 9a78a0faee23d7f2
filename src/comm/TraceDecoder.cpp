#include "TraceDecoder.h"

#include "ProtocolNumbers.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype kLongestTag = 16; // "(Dirct)S:" has 9
const QString kOriginal = QStringLiteral("Original :");
const QString kWriteData = QStringLiteral("WriteData:");
const QString kErrorTag = QStringLiteral("(Error)R:");

// The bytes that hexadecimal digits stand for; nothing when there is another character, or half a byte.
std::optional<QByteArray> bytesOf(QStringView digits)
{
    const auto isHexDigit = [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'); };
    if (digits.size() % 2 != 0 || !std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    return QByteArray::fromHex(digits.toLatin1());
}

// Length of a frame's tag, "(Name)S:" or "(Name)R:"; 0 for other lines.
qsizetype tagLength(const QString& line)
{
    const qsizetype end = line.indexOf(u')');
    const bool isTag = line.startsWith(u'(') && end > 1 && end < kLongestTag && line.size() > end + 2 &&
                       (line[end + 1] == u'S' || line[end + 1] == u'R') && line[end + 2] == u':';
    return isTag ? end + 3 : 0;
}

FrameFields memoryLine(const QString& line)
{
    FrameFields fields;
    fields.line = line;
    const QString address = line.section(u':', 1, 1);
    bool isHex = false;
    const quint32 value = address.toUInt(&isHex, 16);
    const auto bytes = bytesOf(line.section(u':', 2));
    if (!isHex || !bytes)
        return fields;
    fields.direction = FrameFields::Direction::Memory;
    fields.address = value;
    fields.count = static_cast<int>(bytes->size());
    fields.data = *bytes;
    fields.writesMemory = line.startsWith(kWriteData);
    return fields;
}

} // namespace

void TraceDecoder::restart()
{
    m_request.reset();
    m_reply.reset();
    m_repetition.reset();
    m_isAnswered = false;
    m_hasEnded = false;
}

FrameFields TraceDecoder::decode(const QString& line)
{
    FrameFields fields;
    m_repetition.reset();
    const qsizetype tag = tagLength(line);
    if (tag == 0) {
        fields = line.startsWith(kOriginal) || line.startsWith(kWriteData) ? memoryLine(line) : FrameFields();
    } else {
        const bool isSent = line[tag - 2] == u'S';
        if (const auto bytes = bytesOf(QStringView(line).mid(tag))) {
            fields = isSent ? sent(*bytes) : received(*bytes, !line.startsWith(kErrorTag));
        } else {
            fields.direction = isSent ? FrameFields::Direction::Sent : FrameFields::Direction::Received;
            fields.fault = FrameFields::Fault::DamagedLine;
        }
    }
    fields.line = line;
    return fields;
}

FrameFields TraceDecoder::sent(const QByteArray& wire)
{
    restart();
    m_request = FrameFields::ofRequest(wire);
    return *m_request;
}

// A repeated request leaves no line of its own: all replies until one is accepted belong to the same request.
FrameFields TraceDecoder::received(const QByteArray& wire, bool accepted)
{
    if (!accepted && m_reply && m_reply->wire == wire) {
        FrameFields again = *m_reply;
        again.direction = FrameFields::Direction::Rejected;
        if (!again.isError())
            again.fault = FrameFields::Fault::NotAccepted;
        m_reply.reset();
        m_isAnswered = false;
        return again;
    }
    const FrameFields* request = requestOf(wire);
    if (request != nullptr && std::exchange(m_hasEnded, true) && !request->isWrite()) {
        m_repetition = *request;
        m_repetition->direction = FrameFields::Direction::SentAgain;
    }
    FrameFields fields = FrameFields::ofReply(wire, request);
    if (!accepted && !fields.isError())
        fields.fault = FrameFields::Fault::NotAccepted;
    m_isAnswered = m_isAnswered || !fields.isError();
    m_reply.reset();
    if (accepted)
        m_reply = fields;
    return fields;
}

// Null when the request is not in the log: its beginning is lost, or it wrote a switch, which leaves no line.
const FrameFields* TraceDecoder::requestOf(const QByteArray& wire) const
{
    if (!m_request || m_isAnswered)
        return nullptr;
    const FrameFields alone = FrameFields::ofReply(wire, nullptr);
    const bool isSwitch = alone.function == functioncode::kWriteCoil && !alone.isError() &&
                          m_request->function != functioncode::kWriteCoil;
    return isSwitch ? nullptr : &*m_request;
}
