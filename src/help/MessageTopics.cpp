#include "MessageTopics.h"

#include "HtmlText.h"

#include <QStringList>

namespace {

const QString kVariable(QChar::ObjectReplacementCharacter);
constexpr qsizetype kFewestCharacters = 4; // "name: value" would be every message

} // namespace

MessageTopics::MessageTopics(const QString& html)
{
    static const QRegularExpression message(QStringLiteral("<dt class=\"msg\" id=\"([^\"]+)\">(.*?)</dt>"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression variable(QStringLiteral("<var>.*?</var>"),
                                             QRegularExpression::DotMatchesEverythingOption);
    auto found = message.globalMatch(html);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        QString text = match.captured(2);
        const QStringList parts = htmlText(text.replace(variable, kVariable)).split(kVariable);
        Row row{match.captured(1), {}, 0};
        QStringList patterns;
        for (const QString& part : parts) {
            row.fixedCharacters += part.trimmed().size();
            patterns << QRegularExpression::escape(part);
        }
        row.pattern.setPattern(u'^' + patterns.join(QStringLiteral(".*")));
        if (row.fixedCharacters >= kFewestCharacters)
            m_rows.push_back(row);
    }
}

QString MessageTopics::idOf(const QString& shownText) const
{
    const QString text = shownText.simplified();
    const Row* best = nullptr;
    for (const Row& row : m_rows) {
        const bool isBetter = best == nullptr || row.fixedCharacters > best->fixedCharacters;
        if (isBetter && row.pattern.match(text).hasMatch())
            best = &row;
    }
    return best == nullptr ? QString() : best->id;
}
