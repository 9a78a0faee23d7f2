#pragma once

#include <QLocale>
#include <QString>

namespace platform {

// What the desktop platform knows of the user's locale, from the machine's own locale settings.
class UserLocale
{
public:
    explicit UserLocale(const QLocale& locale = QLocale::system());

    // The last two digits of the language identifier in hexadecimal, "09" for English, "11" for Japanese; "00" for a
    // language that the platform's list lacks.
    QString languageCode() const { return m_languageCode; }
    QString shortDate() const { return m_shortDate; } // date pattern with a four-digit year, "YYYY/MM/DD"

private:
    QString m_languageCode;
    QString m_shortDate;
};

} // namespace platform
