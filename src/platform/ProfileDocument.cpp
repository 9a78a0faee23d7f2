#include "ProfileDocument.h"

#include <QStringDecoder>

#include <algorithm>

namespace platform {

namespace {

constexpr qsizetype kUsualKeys = 30; // of a section that describes a parameter
const QByteArray kUtf8Mark = "\xEF\xBB\xBF";

bool isAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return static_cast<quint8>(c) < 0x80; });
}

bool isUtf8Text(const QByteArray& bytes)
{
    if (isAscii(bytes))
        return false;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

ProfileName folded(const QString& name)
{
    return {name.trimmed()};
}

// A copy with characters of its own.
QString detached(const QString& shared)
{
    return QStringView(shared).toString();
}

bool hasLineBreak(const QString& text)
{
    return text.contains(u'\n') || text.contains(u'\r') || text.contains(QChar(0));
}

// A reader gets a value up to its first NUL.
QStringView untilNul(QStringView value)
{
    const auto end = value.indexOf(QChar(0));
    return end < 0 ? value : value.first(end);
}

// A carriage return inside a value is a blank for a reader, as it is when the value is written again.
QString asRead(const QString& value)
{
    return value.contains(u'\r') ? QString(value).replace(u'\r', u' ').trimmed() : value;
}

} // namespace

// FNV-1a over the characters in their lower-case form.
size_t qHash(const ProfileName& name, size_t seed)
{
    size_t hash = seed ^ 0xCBF29CE484222325U;
    for (const QChar c : name.text) {
        const char16_t plain = c.unicode();
        const char16_t lower =
            plain < 0x80 ? (plain >= u'A' && plain <= u'Z' ? plain + 32 : plain) : c.toCaseFolded().unicode();
        hash = (hash ^ lower) * 0x100000001B3U;
    }
    return hash;
}

ProfileDocument::ProfileDocument(const QByteArray& bytes, const CodePage& codePage) : m_codePage(codePage)
{
    m_hasMark = bytes.startsWith(kUtf8Mark);
    m_isUtf8 = m_hasMark || isUtf8Text(bytes);
    m_file = m_hasMark ? bytes.sliced(kUtf8Mark.size()) : bytes;
    m_text = QString::fromLatin1(m_file);
    const auto firstEnd = m_file.indexOf('\n');
    if (firstEnd >= 0)
        m_lineEnd = firstEnd > 0 && m_file[firstEnd - 1] == '\r' ? "\r\n" : "\n";
    m_endsOpen = !m_file.isEmpty() && !m_file.endsWith('\n');
    m_sections.emplace_back();
    m_index.insert({}, 0);
    for (qsizetype pos = 0; pos < m_file.size();) {
        const Span span = spanAt(pos);
        const QString name = sectionName(span);
        if (!name.isNull()) {
            m_sections.emplace_back();
            m_sections.back().header = m_file.sliced(span.begin, span.length);
            m_sections.back().begin = span.next;
            if (!m_index.contains(folded(name)))
                m_index.insert(folded(name), m_sections.size() - 1);
        }
        m_sections.back().end = span.next;
        pos = span.next;
    }
}

ProfileDocument::Span ProfileDocument::spanAt(qsizetype pos) const
{
    const auto found = m_file.indexOf('\n', pos);
    const auto end = found < 0 ? m_file.size() : found;
    // A line keeps a carriage return of its own when the file's line ends have none, and the other way round.
    auto length = end - pos;
    if (m_lineEnd == "\r\n" && length > 0 && found >= 0 && m_file[end - 1] == '\r')
        --length;
    return {pos, length, end + 1, isAscii(QByteArrayView(m_file).sliced(pos, length))};
}

QString ProfileDocument::sectionName(const Span& span) const
{
    // A double-byte character may hold the bytes of a bracket: only plain lines are taken apart as they are.
    const QByteArrayView bytes = QByteArrayView(m_file).sliced(span.begin, span.length);
    if (span.isAscii && !bytes.trimmed().startsWith('['))
        return {};
    const QString line = span.isAscii ? QString::fromLatin1(bytes) : decode(bytes.toByteArray());
    const QStringView text = QStringView(line).trimmed();
    const auto close = text.startsWith(u'[') ? text.lastIndexOf(u']') : -1;
    return close > 0 ? text.sliced(1, close - 1).toString() : QString();
}

ProfileDocument::Section& ProfileDocument::parsed(Section& section) const
{
    if (section.isParsed)
        return section;
    section.isParsed = true;
    section.keys.reserve(section.end > section.begin ? kUsualKeys : 0);
    for (qsizetype pos = section.begin; pos < section.end;) {
        const Span span = spanAt(pos);
        section.lines.push_back(parseSpan(span));
        pos = span.next;
        const Line& line = section.lines.back();
        const auto known = section.keys.size();
        if (line.isBlank)
            continue;
        size_t& place = section.keys[ProfileName{line.key}];
        if (section.keys.size() > known)
            place = section.lines.size() - 1;
    }
    return section;
}

ProfileDocument::Line ProfileDocument::parseSpan(const Span& span) const
{
    if (!span.isAscii) {
        const QByteArray bytes = m_file.sliced(span.begin, span.length);
        return parseLine(bytes, decode(bytes), Characters::Owned);
    }
    const QByteArray bytes = QByteArray::fromRawData(m_file.constData() + span.begin, span.length);
    return parseLine(bytes, QStringView(m_text).sliced(span.begin, span.length), Characters::Shared);
}

ProfileDocument::Line ProfileDocument::parseLine(const QByteArray& bytes, QStringView text, Characters characters)
{
    const auto part = [characters](QStringView view) {
        return characters == Characters::Shared ? QString::fromRawData(view.data(), view.size()) : view.toString();
    };
    const QStringView trimmed = text.trimmed();
    const auto equals = trimmed.indexOf(u'=');
    Line line;
    line.bytes = bytes;
    line.isBlank = trimmed.isEmpty();
    line.hasValue = equals >= 0;
    line.key = part(equals < 0 ? trimmed : trimmed.first(equals).trimmed());
    if (line.hasValue)
        line.value = asRead(part(untilNul(trimmed.sliced(equals + 1)).trimmed()));
    return line;
}

ProfileDocument::Section* ProfileDocument::find(const QString& section)
{
    if (!section.isEmpty() && section == m_lastName)
        return &parsed(m_sections[m_lastSection]);
    const auto found = m_index.constFind(folded(section));
    if (found == m_index.cend())
        return nullptr;
    m_lastName = section;
    m_lastSection = *found;
    return &parsed(m_sections[*found]);
}

bool ProfileDocument::hasSection(const QString& section) const
{
    return m_index.contains(folded(section));
}

std::optional<QString> ProfileDocument::value(const QString& section, const QString& key) const
{
    const Section* holder = find(section);
    if (holder == nullptr)
        return {};
    const auto found = holder->keys.constFind(folded(key));
    if (found == holder->keys.cend() || !holder->lines[*found].hasValue)
        return {};
    return detached(holder->lines[*found].value);
}

QStringList ProfileDocument::lines(const QString& section) const
{
    QStringList result;
    const Section* holder = find(section);
    if (holder == nullptr)
        return result;
    for (const Line& line : holder->lines) {
        if (!line.isBlank && !line.key.startsWith(u';'))
            result << (line.hasValue ? line.key + u'=' + line.value : detached(line.key));
    }
    return result;
}

QString ProfileDocument::refusal(const QString& section, const QString& key)
{
    if (hasLineBreak(section) || section.contains(u']'))
        return QStringLiteral("the section name \"%1\" cannot be stored").arg(section);
    if (hasLineBreak(key) || key.contains(u'=') || key.trimmed().isEmpty() || key.trimmed().startsWith(u'['))
        return QStringLiteral("the key \"%1\" cannot be stored").arg(key);
    return {};
}

QString ProfileDocument::oneLine(QString value)
{
    value.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ').replace(u'\r', u' ');
    return value.remove(QChar(0));
}

ProfileDocument::Section& ProfileDocument::findOrAdd(const QString& section)
{
    if (Section* holder = find(section))
        return *holder;
    m_sections.emplace_back();
    m_sections.back().header = encode(u'[' + section.trimmed() + u']');
    m_index.insert(folded(section), m_sections.size() - 1);
    m_endsOpen = false;
    return m_sections.back();
}

bool ProfileDocument::setValue(const QString& section, const QString& key, const QString& value)
{
    const QString stored = oneLine(value).trimmed();
    Section& holder = findOrAdd(section);
    const auto found = holder.keys.constFind(folded(key));
    if (found != holder.keys.cend()) {
        Line& line = holder.lines[*found];
        if (line.hasValue && line.value == stored)
            return false;
        const QString changed = line.key + u'=' + stored;
        line = parseLine(encode(changed), changed, Characters::Owned);
        return true;
    }
    // Behind the last line that says something, so that the blank lines before the next section stay there.
    auto place = holder.lines.end();
    while (place != holder.lines.begin() && std::prev(place)->isBlank)
        --place;
    const QString text = key.trimmed() + u'=' + stored;
    const auto index = static_cast<size_t>(place - holder.lines.begin());
    m_endsOpen = m_endsOpen && (&holder != &m_sections.back() || place != holder.lines.end());
    holder.lines.insert(place, parseLine(encode(text), text, Characters::Owned));
    holder.keys.insert(folded(key), index);
    return true;
}

QByteArray ProfileDocument::toBytes() const
{
    const QByteArray bytes = joined([](const QByteArray& line) { return line; });
    // A few double-byte texts look like UTF-8. A file of nothing else would be read as such: then let it be UTF-8.
    if (m_isUtf8 || !isUtf8Text(bytes))
        return bytes;
    return joined([this](const QByteArray& line) { return decode(line).toUtf8(); });
}

template <typename Convert> QByteArray ProfileDocument::joined(Convert convert) const
{
    QByteArray bytes = m_hasMark ? kUtf8Mark : QByteArray();
    for (size_t i = 0; i < m_sections.size(); ++i) {
        if (i > 0)
            bytes += convert(m_sections[i].header) + m_lineEnd;
        for (const Line& line : parsed(m_sections[i]).lines)
            bytes += convert(line.bytes) + m_lineEnd;
    }
    if (m_endsOpen && bytes.endsWith(m_lineEnd))
        bytes.chop(m_lineEnd.size());
    return bytes;
}

QString ProfileDocument::decode(const QByteArray& bytes) const
{
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    return m_isUtf8 ? QString::fromUtf8(bytes) : m_codePage.toText(bytes);
}

QByteArray ProfileDocument::encode(const QString& text) const
{
    return m_isUtf8 ? text.toUtf8() : m_codePage.fromText(text);
}

} // namespace platform
