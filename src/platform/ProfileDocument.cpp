#include "ProfileDocument.h"

#include <algorithm>

namespace platform {

namespace {

constexpr size_t kFewLines = 64; // a section that describes a parameter has half of them: faster without an index

constexpr char16_t lowerAscii(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

constexpr bool isBlankCharacter(char16_t c)
{
    constexpr char16_t kEndOfText = 0x1A;
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == kEndOfText;
}

ProfileName folded(const QString& name)
{
    const QStringView text = ProfileDocument::trimmed(name);
    return {text.size() == name.size() ? name : text.toString()};
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

bool isOnlyEquals(const QString& key, const QString& value)
{
    return key.isEmpty() && std::all_of(value.cbegin(), value.cend(), [](QChar c) { return c == u'='; });
}

} // namespace

bool ProfileName::operator==(const ProfileName& other) const
{
    return std::equal(text.begin(), text.end(), other.text.begin(), other.text.end(),
                      [](QChar a, QChar b) { return lowerAscii(a.unicode()) == lowerAscii(b.unicode()); });
}

// FNV-1a over the characters in their lower-case form.
size_t qHash(const ProfileName& name, size_t seed)
{
    size_t hash = seed ^ 0xCBF29CE484222325U;
    for (const QChar c : name.text)
        hash = (hash ^ lowerAscii(c.unicode())) * 0x100000001B3U;
    return hash;
}

QStringView ProfileDocument::trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlankCharacter(text.front().unicode()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlankCharacter(text.back().unicode()))
        text.chop(1);
    return text;
}

ProfileDocument::ProfileDocument(const QByteArray& bytes, const CodePage& codePage) : m_encoding(codePage)
{
    parse(m_encoding.opened(bytes));
}

void ProfileDocument::parse(const QByteArray& bytes)
{
    m_sections.clear();
    m_index.clear();
    m_lastName.clear();
    m_file = bytes;
    m_text = QString::fromLatin1(m_file);
    m_sections.emplace_back();
    m_index.insert({}, 0);
    for (qsizetype pos = 0; pos < m_file.size();) {
        const Span span = spanAt(pos);
        if (pos == 0 && span.end != LineEnd::None)
            m_lineEnd = span.end;
        const QString name = sectionName(span);
        if (!name.isNull()) {
            m_sections.emplace_back();
            m_sections.back().header = m_file.sliced(span.begin, span.length);
            m_sections.back().headerEnd = span.end;
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
    const char* data = m_file.constData();
    const auto size = m_file.size();
    auto end = pos;
    quint8 bits = 0;
    for (; end < size && data[end] != '\n' && data[end] != '\r'; ++end)
        bits |= static_cast<quint8>(data[end]);
    Span span{pos, end - pos, end, LineEnd::None, bits < 0x80};
    if (end == size)
        return span;
    const bool isBoth = data[end] == '\r' && end + 1 < size && data[end + 1] == '\n';
    span.end = isBoth ? LineEnd::Both : data[end] == '\n' ? LineEnd::LineFeed : LineEnd::Return;
    span.next = end + (isBoth ? 2 : 1);
    return span;
}

QString ProfileDocument::sectionName(const Span& span) const
{
    // A double-byte character may end, but not begin, with the byte of a bracket.
    qsizetype first = span.begin;
    while (first < span.begin + span.length && isBlankCharacter(static_cast<uchar>(m_file[first])))
        ++first;
    if (first == span.begin + span.length || m_file[first] != '[')
        return {};
    const QString line = span.isAscii ? QString() : m_encoding.decode(m_file.sliced(span.begin, span.length));
    const QStringView text =
        trimmed(span.isAscii ? QStringView(m_text).sliced(span.begin, span.length) : QStringView(line));
    const auto close = text.startsWith(u'[') ? text.lastIndexOf(u']') : -1;
    return close > 0 ? text.sliced(1, close - 1).toString() : QString();
}

ProfileDocument::Section& ProfileDocument::parsed(Section& section) const
{
    if (section.isParsed)
        return section;
    section.isParsed = true;
    const auto ends = std::count(m_file.cbegin() + section.begin, m_file.cbegin() + section.end, '\n');
    section.lines.reserve(static_cast<size_t>(ends) + 1);
    for (qsizetype pos = section.begin; pos < section.end;) {
        const Span span = spanAt(pos);
        section.lines.push_back(parseSpan(span));
        section.lines.back().end = span.end;
        pos = span.next;
    }
    indexKeys(section);
    return section;
}

void ProfileDocument::indexKeys(Section& section)
{
    section.keys.clear();
    if (section.lines.size() <= kFewLines)
        return;
    section.keys.reserve(static_cast<qsizetype>(section.lines.size()));
    for (size_t i = 0; i < section.lines.size(); ++i) {
        const ProfileName name{section.lines[i].key};
        if (!section.lines[i].isBlank && !section.keys.contains(name))
            section.keys.insert(name, i);
    }
}

std::optional<size_t> ProfileDocument::lineOf(const Section& section, const QString& key)
{
    const ProfileName name = folded(key);
    if (!section.keys.isEmpty()) {
        const auto found = section.keys.constFind(name);
        return found == section.keys.cend() ? std::nullopt : std::optional(*found);
    }
    const std::vector<Line>& lines = section.lines;
    const auto found = std::find_if(lines.begin(), lines.end(), [&name](const Line& line) {
        return line.key.size() == name.text.size() && !line.isBlank && ProfileName{line.key} == name;
    });
    return found == lines.end() ? std::nullopt : std::optional(static_cast<size_t>(found - lines.begin()));
}

ProfileDocument::Line ProfileDocument::parseSpan(const Span& span) const
{
    if (!span.isAscii) {
        const QByteArray bytes = m_file.sliced(span.begin, span.length);
        return parseLine(bytes, m_encoding.decode(bytes), Characters::Owned);
    }
    const QByteArray bytes = QByteArray::fromRawData(m_file.constData() + span.begin, span.length);
    return parseLine(bytes, QStringView(m_text).sliced(span.begin, span.length), Characters::Shared);
}

ProfileDocument::Line ProfileDocument::parseLine(const QByteArray& bytes, QStringView text, Characters characters)
{
    const auto part = [characters](QStringView view) {
        return characters == Characters::Shared ? QString::fromRawData(view.data(), view.size()) : view.toString();
    };
    const QStringView plain = trimmed(text);
    const auto equals = plain.indexOf(u'=');
    Line line;
    line.bytes = bytes;
    line.isBlank = plain.isEmpty();
    line.hasValue = equals >= 0;
    line.key = part(equals < 0 ? plain : trimmed(plain.first(equals)));
    if (line.hasValue)
        line.value = part(trimmed(untilNul(plain.sliced(equals + 1))));
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

QStringList ProfileDocument::sections() const
{
    QStringList names;
    for (auto section = m_index.cbegin(); section != m_index.cend(); ++section) {
        if (section.value() != 0)
            names << section.key().text;
    }
    return names;
}

std::optional<QString> ProfileDocument::value(const QString& section, const QString& key) const
{
    const Section* holder = find(section);
    const auto place = holder == nullptr ? std::nullopt : lineOf(*holder, key);
    if (!place || !holder->lines[*place].hasValue)
        return {};
    return detached(holder->lines[*place].value);
}

QStringList ProfileDocument::lines(const QString& section) const
{
    QStringList result;
    const Section* holder = find(section);
    if (holder == nullptr)
        return result;
    for (const Line& line : holder->lines) {
        const bool isSilent = line.isBlank || line.key.startsWith(u';') || isOnlyEquals(line.key, line.value);
        if (!isSilent)
            result << (line.hasValue ? line.key + u'=' + line.value : detached(line.key));
    }
    return result;
}

Result<> ProfileDocument::canStore(const QString& section, const QString& key)
{
    if (hasLineBreak(section) || section.contains(u']'))
        return Failure{QStringLiteral("the section name \"%1\" cannot be stored").arg(section)};
    const QStringView plain = trimmed(key);
    if (hasLineBreak(key) || key.contains(u'=') || plain.isEmpty() || plain.startsWith(u'['))
        return Failure{QStringLiteral("the key \"%1\" cannot be stored").arg(key)};
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
    m_sections.back().header = m_encoding.encode(u'[' + folded(section).text + u']');
    m_sections.back().headerEnd = m_lineEnd;
    m_index.insert(folded(section), m_sections.size() - 1);
    return m_sections.back();
}

bool ProfileDocument::setValue(const QString& section, const QString& key, const QString& value)
{
    const QString stored = trimmed(oneLine(value)).toString();
    if (!m_encoding.holds(section + key + stored)) {
        const QByteArray bytes = inUtf8();
        m_encoding.becomeUtf8();
        parse(bytes);
    }
    Section& holder = findOrAdd(section);
    if (const auto found = lineOf(holder, key)) {
        Line& line = holder.lines[*found];
        if (line.hasValue && line.value == stored)
            return false;
        const QString changed = line.key + u'=' + stored;
        const LineEnd end = line.end;
        line = parseLine(m_encoding.encode(changed), changed, Characters::Owned);
        line.end = end;
        return true;
    }
    // Behind the last line that says something, so that the blank lines before the next section stay there.
    auto place = holder.lines.end();
    while (place != holder.lines.begin() && std::prev(place)->isBlank)
        --place;
    const QString text = folded(key).text + u'=' + stored;
    const auto added = holder.lines.insert(place, parseLine(m_encoding.encode(text), text, Characters::Owned));
    added->end = m_lineEnd;
    if (holder.keys.isEmpty())
        indexKeys(holder);
    else
        holder.keys.insert(folded(key), static_cast<size_t>(added - holder.lines.begin()));
    return true;
}

QByteArray ProfileDocument::toBytes() const
{
    const QByteArray bytes = joined([](const QByteArray& line) { return line; });
    // A few double-byte texts look like UTF-8. A file of nothing else would be read as such: then let it be UTF-8.
    return m_encoding.closed(m_encoding.isMistaken(bytes) ? inUtf8() : bytes);
}

QByteArray ProfileDocument::inUtf8() const
{
    return joined([this](const QByteArray& line) { return m_encoding.decode(line).toUtf8(); });
}

template <typename Convert> QByteArray ProfileDocument::joined(Convert convert) const
{
    static const QByteArray kEnds[] = {QByteArray(), QByteArrayLiteral("\n"), QByteArrayLiteral("\r"),
                                       QByteArrayLiteral("\r\n")};
    QByteArray bytes;
    LineEnd last = LineEnd::Both;
    const auto add = [&](const QByteArray& line, LineEnd end) {
        if (last == LineEnd::None) // the last line of the file has no end until another one comes behind it
            bytes += kEnds[static_cast<int>(m_lineEnd)];
        bytes += convert(line) + kEnds[static_cast<int>(end)];
        last = end;
    };
    for (size_t i = 0; i < m_sections.size(); ++i) {
        if (i > 0)
            add(m_sections[i].header, m_sections[i].headerEnd);
        for (const Line& line : parsed(m_sections[i]).lines)
            add(line.bytes, line.end);
    }
    return bytes;
}

} // namespace platform
