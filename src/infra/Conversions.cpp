#include "Conversions.h"

#include "Numbers.h"

#include <QStringList>

#include <cfloat>
#include <cmath>
#include <optional>

namespace convert {

namespace {

bool isText(const QVariant& value)
{
    return value.typeId() == QMetaType::QString;
}

// The number of a value that is not a text.
std::optional<double> numberOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? -1.0 : 0.0;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? std::optional<double>(number) : std::nullopt;
}

} // namespace

bool toBoolean(const QVariant& value)
{
    static const QStringList kTrue{QStringLiteral("1"), QStringLiteral("True"), QStringLiteral("TRUE"),
                                   QStringLiteral("true")};
    if (isText(value))
        return kTrue.contains(value.toString());
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    return numberOf(value) == 1.0;
}

qint16 toCheckVal(const QVariant& value)
{
    return toBoolean(value) ? 1 : 0;
}

qint32 toLong(const QVariant& value, qint32 fallback)
{
    if (isText(value))
        return platform::parseInt32(value.toString()).value_or(fallback);
    const auto number = numberOf(value);
    return number ? platform::roundToInt32(*number).value_or(fallback) : fallback;
}

qint16 toInteger(const QVariant& value, qint16 fallback)
{
    if (isText(value))
        return platform::parseInt16(value.toString()).value_or(fallback);
    const auto number = numberOf(value);
    return number ? platform::roundToInt16(*number).value_or(fallback) : fallback;
}

double toDouble(const QVariant& value, double fallback)
{
    return isText(value) ? platform::parseDouble(value.toString()).value_or(fallback)
                         : numberOf(value).value_or(fallback);
}

float toSingle(const QVariant& value, float fallback)
{
    if (isText(value))
        return platform::parseSingle(value.toString()).value_or(fallback);
    const auto number = numberOf(value);
    return number && std::fabs(*number) <= static_cast<double>(FLT_MAX) ? static_cast<float>(*number) : fallback;
}

} // namespace convert
