#pragma once

#include <QRegularExpression>
#include <QString>

#include <vector>

// The messages that the manual explains, by the text that a person sees. A page of messages holds, for each,
// <dt class="msg" id="...">text</dt>, where <var>...</var> stands for what differs from time to time.
class MessageTopics
{
public:
    explicit MessageTopics(const QString& html);

    // The id of the message that the text is, or begins with; of several the most definite one. Empty: none.
    QString idOf(const QString& shownText) const;

private:
    struct Row
    {
        QString id;
        QRegularExpression pattern;
        qsizetype fixedCharacters = 0; // those that do not differ
    };

    std::vector<Row> m_rows;
};
