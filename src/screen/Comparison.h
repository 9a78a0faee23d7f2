#pragma once

#include <QString>

// How texts are compared as numbers. A text that is no number compares false with everything.

// Left, operator ("=", "<>", "<", "<=", "=<", ">", ">=", "=>"), right, as single-precision numbers: limits and values.
bool compareNumbers(const QString& left, const QString& sign, const QString& right);

// The same number in double precision: stored values of choices.
bool isSameNumber(const QString& left, const QString& right);

// The same text, or the same single-precision number.
bool isSameValue(const QString& left, const QString& right);
