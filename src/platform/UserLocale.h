#pragma once

#include <QLocale>
#include <QString>

namespace platform {

// What the desktop platform tells of the user's locale, from the machine's own locale settings.
class UserLocale
{
public:
    explicit UserLocale(const QLocale& locale = QLocale::system());

    // The last two digits of the language identifier in hexadecimal, "09" for English, "11" for Japanese; "00" for a
    // language that the platform's list lacks.
    QString languageCode() const { return m_languageCode; }
    QString dateSeparator() const { return m_dateSeparator; }

    enum class DateOrder { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };
    DateOrder dateOrder() const { return m_dateOrder; }
    QString shortDate() const; // date pattern with a four-digit year, "YYYY/MM/DD"

    // Separators as the decimal text of their code, "46" for a point.
    QString decimalSeparatorCode() const { return m_decimalCode; }
    QString timeSeparatorCode() const { return m_timeCode; }

private:
    QString m_languageCode;
    QString m_dateSeparator;
    DateOrder m_dateOrder;
    QString m_decimalCode;
    QString m_timeCode;
};

} // namespace platform
