#include "LanguageAdditions.h"

#include "CodePage.h"
#include "ProfileDocument.h"

#include <QStringDecoder>
#include <QStringList>

#include <vector>

namespace {

struct Addition
{
    QString section;
    QString key;
    QString value;
};

QStringList linesOf(const QByteArray& bytes, const platform::CodePage& codePage)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString utf8 = decoder(bytes);
    const QString text = decoder.hasError() ? codePage.toText(bytes) : utf8;
    QStringList lines;
    const auto parts = QStringView(text).split(u'\n', Qt::SkipEmptyParts);
    for (const QStringView part : parts) {
        if (!part.trimmed().isEmpty())
            lines << part.trimmed().toString();
    }
    return lines;
}

std::optional<std::vector<Addition>> additionsTo(const QStringList& shipped, const QStringList& copy)
{
    std::vector<Addition> additions;
    QString section;
    qsizetype matched = 0;
    for (const QString& line : copy) {
        const bool isHeader = line.startsWith(u'[') && line.endsWith(u']');
        if (isHeader)
            section = line.mid(1, line.size() - 2);
        if (matched < shipped.size() && line == shipped[matched])
            ++matched;
        else if (!isHeader && (line.startsWith(u';') || !line.contains(u'=')))
            return {};
        else if (!isHeader)
            additions.push_back({section, line.section(u'=', 0, 0).trimmed(), line.section(u'=', 1).trimmed()});
    }
    if (matched < shipped.size())
        return {};
    return additions;
}

} // namespace

std::optional<QByteArray> withAdditions(const QByteArray& shipped, const QByteArray& copy, const QByteArray& next,
                                        const platform::CodePage& codePage)
{
    const auto additions = additionsTo(linesOf(shipped, codePage), linesOf(copy, codePage));
    if (!additions)
        return {};
    platform::ProfileDocument merged(next, codePage);
    for (const Addition& added : *additions) {
        const std::optional<QString> known = merged.value(added.section, added.key);
        if (known && *known != added.value && added.value != added.key)
            return {};
        if (!known)
            merged.setValue(added.section, added.key, added.value);
    }
    return merged.toBytes();
}
