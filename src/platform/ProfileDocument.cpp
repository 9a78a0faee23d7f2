#include "ProfileDocument.h"

#include <QStringDecoder>

#include <algorithm>

namespace platform {

namespace {

constexpr qsizetype kUsualKeys = 30; // of a section that describes a parameter
const QByteArray kUtf8Mark = "\xEF\xBB\xBF";

bool isAscii(const QByteArray& bytes)
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

bool hasLineBreak(const QString& text)
{
    return text.contains(u'\n') || text.contains(u'\r') || text.contains(QChar(0));
}

// A value as a reader gets it: it ends at a NUL, and a carriage return inside it is a blank, as it is when the value is
// written again.
QString asRead(QString value)
{
    const auto end = value.indexOf(QChar(0));
    if (end >= 0)
        value.truncate(end);
    return value.replace(u'\r', u' ').trimmed();
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
    QByteArray rest = bytes;
    m_hasMark = rest.startsWith(kUtf8Mark);
    m_isUtf8 = m_hasMark || isUtf8Text(rest);
    if (m_hasMark)
        rest.remove(0, kUtf8Mark.size());
    const auto firstEnd = rest.indexOf('\n');
    if (firstEnd >= 0)
        m_lineEnd = firstEnd > 0 && rest[firstEnd - 1] == '\r' ? "\r\n" : "\n";
    m_endsOpen = !rest.isEmpty() && !rest.endsWith('\n');
    m_sections.emplace_back();
    m_index.insert({}, 0);
    for (qsizetype pos = 0; pos < rest.size();) {
        auto end = rest.indexOf('\n', pos);
        if (end < 0)
            end = rest.size();
        // A line keeps a carriage return of its own when the file's line ends have none, and the other way round.
        auto length = end - pos;
        if (m_lineEnd == "\r\n" && length > 0 && end < rest.size() && rest[end - 1] == '\r')
            --length;
        addLine(rest.mid(pos, length));
        pos = end + 1;
    }
}

void ProfileDocument::addLine(const QByteArray& bytes)
{
    // A double-byte character may hold the bytes of a bracket: only plain lines are taken apart as they are.
    if (isAscii(bytes))
        addText(bytes, QLatin1String(bytes).trimmed());
    else
        addText(bytes, QStringView(decode(bytes)).trimmed());
}

template <typename View> void ProfileDocument::addText(const QByteArray& bytes, View text)
{
    const auto close = text.startsWith(u'[') ? text.lastIndexOf(u']') : -1;
    if (close > 0) {
        m_sections.emplace_back();
        m_sections.back().header = bytes;
        const ProfileName name = folded(text.sliced(1, close - 1).toString());
        if (!m_index.contains(name))
            m_index.insert(name, m_sections.size() - 1);
        return;
    }
    Section& section = m_sections.back();
    section.lines.push_back(parseLine(bytes, text));
    if (section.lines.back().isBlank)
        return;
    const auto known = section.keys.size();
    if (known == 0)
        section.keys.reserve(kUsualKeys);
    size_t& place = section.keys[ProfileName{section.lines.back().key}];
    if (section.keys.size() > known)
        place = section.lines.size() - 1;
}

template <typename View> ProfileDocument::Line ProfileDocument::parseLine(const QByteArray& bytes, View text)
{
    Line line;
    line.bytes = bytes;
    line.isBlank = text.isEmpty();
    const auto equals = text.indexOf(u'=');
    line.hasValue = equals >= 0;
    line.key = (equals < 0 ? text : text.first(equals).trimmed()).toString();
    if (line.hasValue)
        line.value = asRead(text.sliced(equals + 1).toString());
    return line;
}

ProfileDocument::Section* ProfileDocument::find(const QString& section)
{
    if (!section.isEmpty() && section == m_lastName)
        return &m_sections[m_lastSection];
    const auto found = m_index.constFind(folded(section));
    if (found == m_index.cend())
        return nullptr;
    m_lastName = section;
    m_lastSection = *found;
    return &m_sections[*found];
}

bool ProfileDocument::hasSection(const QString& section) const
{
    return find(section) != nullptr;
}

std::optional<QString> ProfileDocument::value(const QString& section, const QString& key) const
{
    const Section* holder = find(section);
    if (holder == nullptr)
        return {};
    const auto found = holder->keys.constFind(folded(key));
    if (found == holder->keys.cend() || !holder->lines[*found].hasValue)
        return {};
    return holder->lines[*found].value;
}

QStringList ProfileDocument::lines(const QString& section) const
{
    QStringList result;
    const Section* holder = find(section);
    if (holder == nullptr)
        return result;
    for (const Line& line : holder->lines) {
        if (!line.isBlank && !line.key.startsWith(u';'))
            result << (line.hasValue ? line.key + u'=' + line.value : line.key);
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
        line = parseLine(encode(changed), QStringView(changed));
        return true;
    }
    // Behind the last line that says something, so that the blank lines before the next section stay there.
    auto place = holder.lines.end();
    while (place != holder.lines.begin() && std::prev(place)->isBlank)
        --place;
    const QString text = key.trimmed() + u'=' + stored;
    const auto index = static_cast<size_t>(place - holder.lines.begin());
    m_endsOpen = m_endsOpen && (&holder != &m_sections.back() || place != holder.lines.end());
    holder.lines.insert(place, parseLine(encode(text), QStringView(text)));
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
        for (const Line& line : m_sections[i].lines)
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
