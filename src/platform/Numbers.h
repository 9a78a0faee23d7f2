#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

// Numbers as text, by the desktop platform's automation rules with the English number locale.
namespace platform {

// Text to number. Blanks around it, a sign, thousands commas, exponents, and "&h"/"&o" integers are understood
// ("&hFBC0" fits 16 bits as a bit pattern). Fractions round to the nearest integer, halves to even.
// Nothing when the text is not a number or the number does not fit.
std::optional<qint32> parseInt32(const QString& text);
std::optional<qint16> parseInt16(const QString& text);
std::optional<float> parseSingle(const QString& text);
std::optional<double> parseDouble(const QString& text);

// The number of a text times 10 to the power of places, as plain decimal text: the point is moved, so no digit changes.
// isWhole: rounded to the nearest integer, halves to even. Nothing where parseSingle gives nothing.
std::optional<QString> scaledText(const QString& text, int places, bool isWhole);

// Rounds to the nearest integer, halves to even; nothing when it does not fit.
std::optional<qint32> roundToInt32(double value);
std::optional<qint16> roundToInt16(double value);

// Decimal text with up to 7 (single) or 15 (double) significant digits, in the form "1.234568E+07" when too long.
QString singleText(float value);
QString doubleText(double value);

// The number by a pattern of "#", "0" and one ".", such as "#0.00" or "00". Digits beyond the pattern round half away
// from zero, on the decimal text of the number (so 12.345 as a single gives 12.35).
QString formatSingle(float value, const QString& pattern);
QString formatDouble(double value, const QString& pattern);

} // namespace platform
