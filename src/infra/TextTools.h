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

QString withUnit(const QString& value, const QString& unit);  // "120.0 °C"; the value alone when one is empty
QString nameWithTag(const QString& name, const QString& tag); // "Set value 1 [VQSV1]"; the tag alone without a name

// A number (single precision for a float, else double) or date by a pattern. "yyyy/mm/dd" in the pattern becomes
// shortDate, the four-digit-year short date of the user's locale.
QString format(const QVariant& value, const QString& pattern, const QString& shortDate);

} // namespace texttools
