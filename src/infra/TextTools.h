#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

// Small helpers on texts.
namespace texttools {

QString dataToken(const QString& text, const QString& token); // behind the first token; the text when it has none
QString keyToken(const QString& text, const QString& token);  // before the first token; the text when it has none

// The argument of a command-line switch, up to the next "/". Without keepCase both texts become upper case first.
QString commandArgument(const QString& commandLine, const QString& name, bool keepCase);

QString hexString(const QByteArray& bytes); // "01ABFF"
QString addressText(qint32 address);        // two digits at least for 0 to 99

// A number (single precision for a float, else double) or date by a pattern. "yyyy/mm/dd" in the pattern becomes
// shortDate, the four-digit-year short date of the user's locale.
QString format(const QVariant& value, const QString& pattern, const QString& shortDate);

} // namespace texttools
