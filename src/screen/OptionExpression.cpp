#include "OptionExpression.h"

#include <QStringList>

namespace {

bool isKnownFamily(const QString& family)
{
    return family == u"KX4" || family == u"KX6" || family == u"KX9";
}

bool termMatches(const QString& term, const QString& modelString)
{
    const int digit = term.isEmpty() ? -1 : term.at(0).digitValue();
    return digit >= 0 && term.mid(2).split(u',').contains(optionText(modelString, digit));
}

} // namespace

QString optionText(const QString& modelString, int index)
{
    if (!isKnownFamily(modelString.left(3)))
        return {};
    if (index == -1)
        return modelString.left(3);
    if (index == 0)
        return modelString.left(4);
    if (index >= 1 && index <= 5)
        return modelString.mid(index + 3, 1);
    if (index >= 6 && index <= 8)
        return modelString.mid(index + 5, 1);
    return {};
}

bool isOptionOn(const QString& expression, bool visible, const QString& modelString)
{
    const QString trimmed = expression.trimmed();
    if (trimmed.isEmpty())
        return visible;
    if (trimmed == u"USE")
        return true;
    const QStringList terms = trimmed.split(u'&');
    for (const QString& term : terms) {
        if (!termMatches(term, modelString))
            return false;
    }
    return true;
}
