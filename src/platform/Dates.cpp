#include "Dates.h"

namespace platform {

namespace {

QString twoDigits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

// The text of one run of equal pattern letters; afterHour: an "m" run means minutes. Empty: no date letter.
QString partText(const QDateTime& when, QChar letter, qsizetype length, bool afterHour)
{
    switch (letter.toLower().unicode()) {
    case u'y':
        return length > 2 ? QStringLiteral("%1").arg(when.date().year(), 4, 10, QLatin1Char('0'))
                          : twoDigits(when.date().year() % 100);
    case u'm':
        return twoDigits(afterHour ? when.time().minute() : when.date().month());
    case u'd':
        return twoDigits(when.date().day());
    case u'h':
        return twoDigits(when.time().hour());
    case u'n':
        return twoDigits(when.time().minute());
    case u's':
        return twoDigits(when.time().second());
    default:
        return {};
    }
}

} // namespace

QString formatDate(const QDateTime& when, const QString& pattern)
{
    QString text;
    bool afterHour = false;
    for (qsizetype pos = 0; pos < pattern.size();) {
        const QChar letter = pattern[pos].toLower();
        qsizetype length = 1;
        while (pos + length < pattern.size() && pattern[pos + length].toLower() == letter)
            ++length;
        const QString part = partText(when, letter, length, afterHour);
        text += part.isEmpty() ? pattern.mid(pos, length) : part;
        if (!part.isEmpty())
            afterHour = letter == u'h';
        pos += length;
    }
    return text;
}

} // namespace platform
