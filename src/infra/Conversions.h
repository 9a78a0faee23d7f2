#pragma once

#include <QVariant>

// Conversions that never fail: what cannot be converted gives the caller's default. Texts follow the platform's number
// rules ("&hFBC0" is a number); a Boolean True counts as -1.
namespace convert {

bool toBoolean(const QVariant& value); // only 1 and the texts "1", "True", "TRUE", "true"
qint16 toCheckVal(const QVariant& value);
qint32 toLong(const QVariant& value, qint32 fallback);
qint16 toInteger(const QVariant& value, qint16 fallback);
double toDouble(const QVariant& value, double fallback);
float toSingle(const QVariant& value, float fallback);

} // namespace convert
