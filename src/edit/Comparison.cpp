#include "Comparison.h"

#include "Numbers.h"

bool holds(const QString& left, const QString& sign, const QString& right)
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
