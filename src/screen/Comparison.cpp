#include "Comparison.h"

#include "Numbers.h"

bool compareNumbers(const QString& left, const QString& sign, const QString& right)
{
    const auto a = platform::parseSingle(left);
    const auto b = platform::parseSingle(right);
    if (!a || !b)
        return false;
    if (sign == u"=")
        return *a == *b;
    if (sign == u"<>")
        return *a != *b;
    if (sign == u"<")
        return *a < *b;
    if (sign == u"<=" || sign == u"=<")
        return *a <= *b;
    if (sign == u">")
        return *a > *b;
    return (sign == u">=" || sign == u"=>") && *a >= *b;
}

bool isSameNumber(const QString& left, const QString& right)
{
    const auto a = platform::parseDouble(left);
    const auto b = platform::parseDouble(right);
    return a && b && *a == *b;
}

bool isSameValue(const QString& left, const QString& right)
{
    return left == right || compareNumbers(left, QStringLiteral("="), right);
}
